# Benchmark of clsUniFile's UTF-8 lines (Linux only): reading and writing a 64 MiB file line by
# line against std::getline with a UTF-8 decode and against std::ofstream.
if(NOT WIN32)
  add_executable(bench_files_lines ${CMAKE_CURRENT_LIST_DIR}/bench_files_lines.cpp)
  tc_target_options(bench_files_lines)
  target_link_libraries(bench_files_lines PRIVATE tc_text)
endif()
