# libFuzzer harnesses for the program's own readers of outside bytes: tag
# records, GIF frames, PCX pictures, number texts, association command lines,
# the registry file, thumbnail cache entries, CDDB answers and the metafile
# helper's input. Built only with -DVISTREL_FUZZ=ON and clang; each harness
# links a small library of just the sources its reader needs, built with
# the sanitizers, and Qt as the program does. scripts/fuzz.sh builds and
# runs them.

option(VISTREL_FUZZ "Build the libFuzzer harnesses (clang only)" OFF)

if(VISTREL_FUZZ AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  find_package(Qt6 REQUIRED COMPONENTS Core Gui Svg)
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(VISTREL_FUZZ_CDDB REQUIRED IMPORTED_TARGET libcddb)
  find_library(VISTREL_FUZZ_EMF2SVG emf2svg)
  if(NOT VISTREL_FUZZ_EMF2SVG)
    set(VISTREL_FUZZ_EMF2SVG "libemf2svg.so.1")
  endif()

  set(VISTREL_SRC ${CMAKE_CURRENT_LIST_DIR}/../src)
  set(VISTREL_FUZZ_DIR ${CMAKE_CURRENT_LIST_DIR})
  set(VISTREL_FUZZ_SANITIZE address,undefined)
  set(VISTREL_FUZZ_FLAGS -g -O1 -fno-omit-frame-pointer -fno-sanitize-recover=undefined)

  # A reader's sources as a static library, instrumented for the fuzzer.
  function(vistrel_fuzz_library name)
    add_library(${name} STATIC ${ARGN})
    target_include_directories(${name} PUBLIC ${VISTREL_SRC})
    target_compile_options(${name} PUBLIC ${VISTREL_FUZZ_FLAGS}
                           PRIVATE -fsanitize=fuzzer-no-link,${VISTREL_FUZZ_SANITIZE})
    target_link_libraries(${name} PUBLIC Qt6::Core Qt6::Gui)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTORCC OFF AUTOUIC OFF)
  endfunction()

  # One harness: fuzz/<name>Fuzz.cpp linked with the reader's library.
  set(VISTREL_FUZZERS)
  function(vistrel_fuzzer name library)
    add_executable(${name}Fuzz ${VISTREL_FUZZ_DIR}/${name}Fuzz.cpp ${ARGN})
    target_compile_options(${name}Fuzz PRIVATE -fsanitize=fuzzer,${VISTREL_FUZZ_SANITIZE})
    target_link_options(${name}Fuzz PRIVATE -fsanitize=fuzzer,${VISTREL_FUZZ_SANITIZE})
    target_link_libraries(${name}Fuzz PRIVATE ${library})
    set_target_properties(${name}Fuzz PROPERTIES AUTOMOC OFF AUTORCC OFF AUTOUIC OFF
                          RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz)
    set(VISTREL_FUZZERS ${VISTREL_FUZZERS} ${name}Fuzz PARENT_SCOPE)
  endfunction()

  vistrel_fuzz_library(VistrelFuzzTags ${VISTREL_SRC}/cd/Mp3Tags.cpp ${VISTREL_SRC}/cd/TagFileWriter.cpp
                       ${VISTREL_SRC}/platform/FileTimes.cpp ${VISTREL_SRC}/platform/LeftoverFiles.cpp
                       ${VISTREL_SRC}/platform/FileDescriptors.cpp)
  vistrel_fuzz_library(VistrelFuzzGif ${VISTREL_SRC}/viewers/GifFrames.cpp)
  vistrel_fuzz_library(VistrelFuzzPcx ${VISTREL_SRC}/catalogue/PcxDecoder.cpp)
  vistrel_fuzz_library(VistrelFuzzNumeric ${VISTREL_SRC}/controls/NumericFormat.cpp)
  # The browser's opening rules; what else that file uses (the program's
  # state, the desktop's handlers) is stood in for by stubs.
  vistrel_fuzz_library(VistrelFuzzOpening ${VISTREL_SRC}/browser/Opening.cpp
                       ${VISTREL_FUZZ_DIR}/stubs/OpeningStubs.cpp)
  vistrel_fuzz_library(VistrelFuzzRegistry ${VISTREL_SRC}/platform/RegistryStore.cpp)
  vistrel_fuzz_library(VistrelFuzzThumbnails ${VISTREL_SRC}/browser/ThumbnailCache.cpp)
  vistrel_fuzz_library(VistrelFuzzCddb ${VISTREL_SRC}/cd/CddbLookup.cpp ${VISTREL_SRC}/cd/CddbCipher.cpp
                       ${VISTREL_FUZZ_DIR}/stubs/CddbStubs.cpp)
  target_link_libraries(VistrelFuzzCddb PUBLIC PkgConfig::VISTREL_FUZZ_CDDB)
  # clang notes a field of the data file's transaction that only g++ sees used.
  target_compile_options(VistrelFuzzCddb PRIVATE -Wno-unused-private-field)
  vistrel_fuzz_library(VistrelFuzzMetafile ${VISTREL_SRC}/decoder/EmfRenderer.cpp ${VISTREL_SRC}/decoder/Fit.cpp)
  target_compile_definitions(VistrelFuzzMetafile PRIVATE VISTREL_EMF2SVG_LIBRARY="${VISTREL_FUZZ_EMF2SVG}")
  target_link_libraries(VistrelFuzzMetafile PUBLIC Qt6::Svg ${CMAKE_DL_LIBS})

  vistrel_fuzzer(Mp3Tags VistrelFuzzTags)
  vistrel_fuzzer(LoadTags VistrelFuzzTags)
  vistrel_fuzzer(WavTags VistrelFuzzTags)
  vistrel_fuzzer(MidiTags VistrelFuzzTags)
  vistrel_fuzzer(WmaTags VistrelFuzzTags)
  vistrel_fuzzer(GifFrames VistrelFuzzGif)
  vistrel_fuzzer(Pcx VistrelFuzzPcx)
  vistrel_fuzzer(NumericFormat VistrelFuzzNumeric)
  vistrel_fuzzer(CommandPath VistrelFuzzOpening)
  vistrel_fuzzer(RegistryStore VistrelFuzzRegistry)
  vistrel_fuzzer(ThumbnailEntry VistrelFuzzThumbnails)
  vistrel_fuzzer(CddbAnswer VistrelFuzzCddb)
  vistrel_fuzzer(Metafile VistrelFuzzMetafile)

  add_custom_target(fuzzers DEPENDS ${VISTREL_FUZZERS})
endif()
