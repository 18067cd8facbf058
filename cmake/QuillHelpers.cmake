# Build helpers shared by every unit folder.
#
# Each unit folder calls quill_unit(); its sources are every *.cc in the folder
# except *_test.cc. A unit becomes an object library (compiled once, PIC, hidden
# visibility) and a static library of the same objects for tests and tools that
# want only that unit. quill_link_library() then builds libquill23.so and
# libquill23.a from the objects of all units.

set(QUILL_ALL_UNITS "" CACHE INTERNAL "")

function(quill_warnings target)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow=local -Wnon-virtual-dtor)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
      target_compile_options(${target} PRIVATE -Wno-shadow-field-in-constructor -Wno-unknown-warning-option)
    endif()
    if(QUILL_WERROR)
      target_compile_options(${target} PRIVATE -Werror)
    endif()
  endif()
endfunction()

function(quill_sanitize target)
  if(QUILL_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(${target} PRIVATE -fsanitize=address,undefined)
  endif()
  if(QUILL_BUILD_FUZZERS)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer)
  endif()
endfunction()

# quill_unit(<name> [DEPS <unit targets or libraries>...] [SOURCES <extra sources>...])
function(quill_unit name)
  cmake_parse_arguments(U "" "" "DEPS;SOURCES" ${ARGN})
  file(GLOB srcs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cc)
  list(FILTER srcs EXCLUDE REGEX "_test\\.cc$")
  set(obj quill_${name}_obj)
  add_library(${obj} OBJECT ${srcs} ${U_SOURCES})
  set_target_properties(${obj} PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_compile_definitions(${obj} PRIVATE QUILL_BUILDING)
  target_include_directories(${obj} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<BUILD_INTERFACE:${QUILL_GENERATED_DIR}>)
  target_link_libraries(${obj} PUBLIC ${U_DEPS})
  quill_warnings(${obj})
  quill_sanitize(${obj})

  add_library(quill_${name} STATIC $<TARGET_OBJECTS:${obj}>)
  target_include_directories(quill_${name} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<BUILD_INTERFACE:${QUILL_GENERATED_DIR}>)
  target_link_libraries(quill_${name} PUBLIC ${U_DEPS})

  set(QUILL_ALL_UNITS ${QUILL_ALL_UNITS} ${name} CACHE INTERNAL "")

  if(QUILL_BUILD_TESTS)
    file(GLOB tests CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*_test.cc)
    foreach(t IN LISTS tests)
      get_filename_component(tname ${t} NAME_WE)
      quill_test(${tname} ${t} LIBS quill_${name})
    endforeach()
  endif()
endfunction()

# The environment every test runs in: pinned locales and time zone, so that no
# result depends on the machine the tests run on.
set(QUILL_TEST_ENV
  "LC_ALL=unset:"
  "LC_CTYPE=unset:"
  "LC_MESSAGES=unset:"
  "LC_TIME=unset:"
  "LC_NUMERIC=unset:"
  "LANGUAGE=unset:"
  "LANG=set:en_US.UTF-8"
  "QUILL_SYSTEM_LOCALE=set:en-US"
  "QUILL_ANSI_CODEPAGE=unset:"
  "TZ=set:UTC"
  "QUILL_SOURCE_DIR=set:${PROJECT_SOURCE_DIR}")

# quill_test(<name> <source>... LIBS <libs>...): one test executable, one CTest test.
function(quill_test name)
  cmake_parse_arguments(T "" "" "LIBS" ${ARGN})
  add_executable(${name} ${T_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE ${T_LIBS} GTest::gtest GTest::gmock GTest::gtest_main Threads::Threads)
  target_compile_definitions(${name} PRIVATE QUILL_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  quill_warnings(${name})
  quill_sanitize(${name})
  if(QUILL_SANITIZE)
    target_link_options(${name} PRIVATE -fsanitize=address,undefined)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT_MODIFICATION "${QUILL_TEST_ENV}"
    TIMEOUT 600)
endfunction()

# quill_test_without_avx512(<test>...): each test again with QUILL_NO_AVX512
# set, so that the AVX2 paths run on a machine that has AVX-512 too.
function(quill_test_without_avx512)
  foreach(name IN LISTS ARGN)
    add_test(NAME ${name}_no_avx512 COMMAND ${name})
    set_tests_properties(${name}_no_avx512 PROPERTIES
      ENVIRONMENT_MODIFICATION "${QUILL_TEST_ENV};QUILL_NO_AVX512=set:1"
      TIMEOUT 600)
  endforeach()
endfunction()

# Builds libquill23.so and libquill23.a from every unit's objects.
function(quill_link_library)
  set(objs "")
  set(deps "")
  foreach(u IN LISTS QUILL_ALL_UNITS)
    list(APPEND objs $<TARGET_OBJECTS:quill_${u}_obj>)
  endforeach()

  # The load hooks come last so that they run after every unit's static
  # initialisation; they exist only in the shared library.
  add_library(quill23 SHARED ${objs} ${PROJECT_SOURCE_DIR}/quill/frame/shared/load_hooks.cc)
  target_compile_definitions(quill23 PRIVATE QUILL_BUILDING)
  quill_warnings(quill23)
  set_target_properties(quill23 PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION 23
    EXPORT_NAME quill
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(quill23 PRIVATE ICU::uc ICU::i18n ICU::data SQLite::SQLite3 Threads::Threads ${CMAKE_DL_LIBS})
  target_include_directories(quill23 PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<BUILD_INTERFACE:${QUILL_GENERATED_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_compile_features(quill23 PUBLIC cxx_std_20)
  target_link_options(quill23 PRIVATE -Wl,--no-undefined)
  quill_sanitize(quill23)
  add_library(Quill::quill ALIAS quill23)
  if(QUILL_BUILD_FUZZERS)
    # Fuzz builds instrument every object for libFuzzer, whose runtime only the
    # fuzz programs link; they use the static library, so the shared one is
    # left out of the build.
    set_target_properties(quill23 PROPERTIES EXCLUDE_FROM_ALL ON)
  endif()

  add_library(quill23_static STATIC ${objs})
  set_target_properties(quill23_static PROPERTIES OUTPUT_NAME quill23 EXPORT_NAME quill_static)
  target_link_libraries(quill23_static PUBLIC ICU::uc ICU::i18n ICU::data SQLite::SQLite3 Threads::Threads ${CMAKE_DL_LIBS})
  target_include_directories(quill23_static PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<BUILD_INTERFACE:${QUILL_GENERATED_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_compile_features(quill23_static PUBLIC cxx_std_20)
  add_library(Quill::quill_static ALIAS quill23_static)
endfunction()

function(quill_install_rules)
  include(CMakePackageConfigHelpers)
  install(TARGETS quill23 quill23_static EXPORT QuillTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  # The Qt module's headers only come with the module.
  set(qt_headers "")
  if(NOT TARGET quill23-qt)
    set(qt_headers PATTERN "qt" EXCLUDE)
  endif()
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/quill DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h"
    PATTERN "internal" EXCLUDE
    PATTERN "engine" EXCLUDE        # the help engine plugin's own sources
    PATTERN "testdata" EXCLUDE
    PATTERN "*_test*" EXCLUDE
    ${qt_headers})
  install(DIRECTORY ${QUILL_GENERATED_DIR}/quill DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    OPTIONAL FILES_MATCHING PATTERN "*.h")
  install(EXPORT QuillTargets NAMESPACE Quill:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Quill)
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/QuillConfig.cmake.in
    ${CMAKE_BINARY_DIR}/QuillConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Quill)
  write_basic_package_version_file(${CMAKE_BINARY_DIR}/QuillConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
  install(FILES ${CMAKE_BINARY_DIR}/QuillConfig.cmake ${CMAKE_BINARY_DIR}/QuillConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Quill)
  quill_install_pkgconfig(quill23)
endfunction()

# quill_install_pkgconfig(<name>): configures cmake/<name>.pc.in and installs it
# under LIBDIR/pkgconfig. The file finds the prefix from its own place
# (QUILL_PC_PREFIX is ${pcfiledir}-relative), whatever prefix the tree is
# installed under.
function(quill_install_pkgconfig name)
  if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    set(QUILL_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
  else()
    file(RELATIVE_PATH to_prefix "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
    set(QUILL_PC_PREFIX "\${pcfiledir}/${to_prefix}")
  endif()
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${CMAKE_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${CMAKE_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
