# The data file Vistrel.VRD: made at build time from the schema and the
# tutorial's lines by a small tool, encrypted with the program's password.
#
# The fresh file is made in the build's data folder. It is copied into the
# program folder only when none stands there: the program folder's file
# holds the user's albums and captions, and a rebuild must never replace it.

add_executable(MakeDataFile ${CMAKE_SOURCE_DIR}/data/MakeDataFile.cpp)
target_include_directories(MakeDataFile PRIVATE ${CMAKE_SOURCE_DIR}/src)
target_compile_definitions(MakeDataFile PRIVATE SQLITE_HAS_CODEC)
target_link_libraries(MakeDataFile PRIVATE PkgConfig::SQLCIPHER)

set(VISTREL_DATA_SOURCES
  ${CMAKE_SOURCE_DIR}/data/schema.sql
  ${CMAKE_SOURCE_DIR}/data/help.sql)
set(VISTREL_FRESH_DATA_FILE ${CMAKE_BINARY_DIR}/data/Vistrel.VRD)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/data)

add_custom_command(
  OUTPUT ${VISTREL_FRESH_DATA_FILE}
  COMMAND MakeDataFile ${VISTREL_FRESH_DATA_FILE} ${VISTREL_DATA_SOURCES}
  DEPENDS MakeDataFile ${VISTREL_DATA_SOURCES} ${CMAKE_SOURCE_DIR}/src/core/DataFileKey.h
  COMMENT "Making the data file Vistrel.VRD"
  VERBATIM)
add_custom_target(VistrelDataFile ALL
  COMMAND ${CMAKE_COMMAND} -DSOURCE=${VISTREL_FRESH_DATA_FILE}
          -DTARGET=${VISTREL_PROGRAM_DIR}/Vistrel.VRD
          -P ${CMAKE_SOURCE_DIR}/data/InstallDataFile.cmake
  DEPENDS ${VISTREL_FRESH_DATA_FILE}
  VERBATIM)
list(APPEND VISTREL_PROGRAM_PARTS VistrelDataFile)
