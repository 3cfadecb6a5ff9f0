# vistrel-decode: the decoding helper process for metafiles. libwmf is
# linked directly; libemf2svg is opened at run time (see EmfRenderer.cpp),
# since the two export functions of the same name.

find_program(LIBWMF_CONFIG libwmf-config)
if(LIBWMF_CONFIG)
  execute_process(COMMAND ${LIBWMF_CONFIG} --cflags OUTPUT_VARIABLE LIBWMF_CFLAGS
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  execute_process(COMMAND ${LIBWMF_CONFIG} --libs OUTPUT_VARIABLE LIBWMF_LIBS
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  separate_arguments(LIBWMF_CFLAGS UNIX_COMMAND "${LIBWMF_CFLAGS}")
  separate_arguments(LIBWMF_LIBS UNIX_COMMAND "${LIBWMF_LIBS}")
else()
  pkg_check_modules(LIBWMF REQUIRED libwmf)
  set(LIBWMF_CFLAGS ${LIBWMF_CFLAGS})
  set(LIBWMF_LIBS ${LIBWMF_LDFLAGS})
endif()

find_library(EMF2SVG_LIBRARY emf2svg REQUIRED)

add_executable(vistrel-decode
  ${CMAKE_SOURCE_DIR}/src/decoder/main.cpp
  ${CMAKE_SOURCE_DIR}/src/decoder/Fit.cpp
  ${CMAKE_SOURCE_DIR}/src/decoder/MemoryWatch.cpp
  ${CMAKE_SOURCE_DIR}/src/decoder/WmfRenderer.cpp
  ${CMAKE_SOURCE_DIR}/src/decoder/EmfRenderer.cpp)
target_include_directories(vistrel-decode PRIVATE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(vistrel-decode PRIVATE ${LIBWMF_CFLAGS})
target_compile_definitions(vistrel-decode PRIVATE VISTREL_EMF2SVG_LIBRARY="${EMF2SVG_LIBRARY}")
target_link_libraries(vistrel-decode PRIVATE Qt6::Gui Qt6::Svg ${LIBWMF_LIBS} ${CMAKE_DL_LIBS})
set_target_properties(vistrel-decode PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${VISTREL_PROGRAM_DIR}
  AUTOMOC OFF)
# The helper runs under an address-space ceiling, which the address
# sanitizer's shadow memory cannot live under: a checked build leaves the
# helper unchecked (its input handling is fuzzed on its own).
if(VISTREL_SANITIZE)
  target_compile_options(vistrel-decode PRIVATE -fno-sanitize=all)
  target_link_options(vistrel-decode PRIVATE -fno-sanitize=all)
endif()
list(APPEND VISTREL_PROGRAM_PARTS vistrel-decode)
