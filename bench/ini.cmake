# Loading a 5 MB INI file with clsFileIniEx and reading every key, against Python's configparser
# reading the same file in the same run (Linux only: the baseline runs python3).
if(NOT WIN32)
  add_executable(bench_ini ${CMAKE_CURRENT_LIST_DIR}/bench_ini.cpp)
  tc_target_options(bench_ini)
  target_link_libraries(bench_ini PRIVATE tc_text)
  target_compile_definitions(bench_ini PRIVATE TC_BENCH_INI_SCRIPT="${CMAKE_CURRENT_LIST_DIR}/bench_ini_configparser.py")
endif()
