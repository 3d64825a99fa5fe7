# Messages per second through a window hooked by the subclassing engine and by cUniSubclass,
# against the same window unhooked, measured in one run.
if(WIN32)
  add_executable(bench_subclass ${CMAKE_CURRENT_LIST_DIR}/subclass.cpp)
  tc_target_options(bench_subclass)
  # Shares the tests' window and owner helpers.
  target_include_directories(bench_subclass PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(bench_subclass PRIVATE tc_frame)
endif()
