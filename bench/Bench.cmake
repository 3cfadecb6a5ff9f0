# Benchmarks: built with the program, run by hand, never by CTest.
if("browser" IN_LIST VISTREL_SUBSYSTEMS)
  add_executable(ListingBench ${CMAKE_SOURCE_DIR}/bench/ListingBench.cpp)
  target_link_libraries(ListingBench PRIVATE VistrelCore)
  set_target_properties(ListingBench PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bench)
  add_executable(ThumbnailBench ${CMAKE_SOURCE_DIR}/bench/ThumbnailBench.cpp)
  target_link_libraries(ThumbnailBench PRIVATE VistrelCore)
  set_target_properties(ThumbnailBench PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bench)
endif()
