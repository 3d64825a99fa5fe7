# DrawButton per style on a 200 x 32 rectangle in a 32-bit memory DC, against one FillRect of the
# same rectangle in the same run.
if(WIN32)
  add_executable(bench_drawbutton ${CMAKE_CURRENT_LIST_DIR}/bench_drawbutton.cpp)
  tc_target_options(bench_drawbutton)
  target_link_libraries(bench_drawbutton PRIVATE tc_graphics)
endif()
