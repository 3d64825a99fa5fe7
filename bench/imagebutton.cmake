# Painting a 120 x 28 image button with a 16 x 16 picture, against the platform's own owner-drawn
# BUTTON painting a frame, the same picture and the same text, measured in one run.
if(WIN32)
  add_executable(bench_imagebutton ${CMAKE_CURRENT_LIST_DIR}/imagebutton.cpp)
  tc_target_options(bench_imagebutton)
  target_link_libraries(bench_imagebutton PRIVATE tc_controls)
endif()
