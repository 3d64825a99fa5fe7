# GoogleTest from the distribution's sources, built once per build tree with the target's compiler.
set(TC_GTEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest sources")
set(gtest_force_shared_crt OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
add_subdirectory(${TC_GTEST_SOURCE} ${CMAKE_BINARY_DIR}/_googletest EXCLUDE_FROM_ALL SYSTEM)
