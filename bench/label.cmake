# Painting a 200 x 24 label with a caption, against the platform's own static control painting
# the same text, measured in one run.
if(WIN32)
  add_executable(bench_label ${CMAKE_CURRENT_LIST_DIR}/label.cpp)
  tc_target_options(bench_label)
  target_link_libraries(bench_label PRIVATE tc_controls)
endif()
