# Benchmarks of the text core (Linux only): UTF-8 against iconv, Base64 against a plain table
# codec, large-number products and quotients against GMP when it is installed.
if(NOT WIN32)
  add_executable(bench_text_utf8 ${CMAKE_CURRENT_LIST_DIR}/bench_text_utf8.cpp)
  tc_target_options(bench_text_utf8)
  target_link_libraries(bench_text_utf8 PRIVATE tc_text)

  add_executable(bench_text_base64 ${CMAKE_CURRENT_LIST_DIR}/bench_text_base64.cpp)
  tc_target_options(bench_text_base64)
  target_link_libraries(bench_text_base64 PRIVATE tc_text)

  find_library(TC_GMP_LIBRARY gmp)
  find_path(TC_GMP_INCLUDE gmp.h)
  if(TC_GMP_LIBRARY AND TC_GMP_INCLUDE)
    add_executable(bench_text_largenumber ${CMAKE_CURRENT_LIST_DIR}/bench_text_largenumber.cpp)
    tc_target_options(bench_text_largenumber)
    target_include_directories(bench_text_largenumber PRIVATE ${TC_GMP_INCLUDE})
    target_link_libraries(bench_text_largenumber PRIVATE tc_text ${TC_GMP_LIBRARY})
  else()
    message(STATUS "GMP not found: bench_text_largenumber is not built")
  endif()
endif()
