# The Windows locale fact table, compiled into the runtime.
#
# Included from quill/rtl/CMakeLists.txt, this file adds a build step that turns
# data/locales/windows-locales.tsv into ${QUILL_GENERATED_DIR}/quill/rtl/
# localefacts_table.inc, a sorted array of WinLocaleFact rows that
# localefacts.cc includes. The step re-runs whenever the TSV (or this file)
# changes. Run with `cmake -P` it is the generator itself, so a fresh machine
# needs nothing beyond CMake.

if(CMAKE_SCRIPT_MODE_FILE)
  cmake_minimum_required(VERSION 3.25)
  # Generator mode: cmake -DTSV=<in> -DOUT=<out> -P localefacts.cmake
  file(STRINGS "${TSV}" lines ENCODING UTF-8)
  list(POP_FRONT lines header)
  if(NOT header MATCHES "^lcid\ttag\tabbrev\tansi_cp\toem_cp\tiso639\tiso3166\tenglish_language\tenglish_display$")
    message(FATAL_ERROR "${TSV}: unexpected header line: ${header}")
  endif()
  set(body "")
  set(count 0)
  set(previous -1)
  foreach(line IN LISTS lines)
    if(line STREQUAL "")
      continue()
    endif()
    string(REPLACE "\t" ";" cells "${line}")
    list(LENGTH cells n)
    if(NOT n EQUAL 9)
      message(FATAL_ERROR "${TSV}: expected 9 cells, got ${n}: ${line}")
    endif()
    list(GET cells 0 lcid)
    list(GET cells 1 tag)
    list(GET cells 2 abbrev)
    list(GET cells 3 ansi)
    list(GET cells 4 oem)
    list(GET cells 5 iso639)
    list(GET cells 6 iso3166)
    list(GET cells 7 lang)
    list(GET cells 8 display)
    math(EXPR value "0x${lcid}")
    if(value LESS_EQUAL previous)
      message(FATAL_ERROR "${TSV}: rows are not sorted by LCID at ${lcid}")
    endif()
    set(previous ${value})
    # Empty code page cells mean "unknown"; the table stores 0 for them.
    if(ansi STREQUAL "")
      set(ansi 0)
    endif()
    if(oem STREQUAL "")
      set(oem 0)
    endif()
    foreach(v IN ITEMS tag abbrev iso639 iso3166 lang display)
      string(REPLACE "\\" "\\\\" ${v} "${${v}}")
      string(REPLACE "\"" "\\\"" ${v} "${${v}}")
    endforeach()
    string(APPEND body "    {0x${lcid}, \"${tag}\", \"${abbrev}\", ${ansi}, ${oem}, \"${iso639}\", \"${iso3166}\", \"${lang}\", \"${display}\"},\n")
    math(EXPR count "${count} + 1")
  endforeach()
  set(text "// Generated from windows-locales.tsv by localefacts.cmake; do not edit.\n")
  string(APPEND text "// ${count} rows, sorted by LCID.\n")
  string(APPEND text "inline constexpr std::size_t kWinLocaleFactCount = ${count};\n")
  string(APPEND text "inline constexpr WinLocaleFact kWinLocaleFactRows[kWinLocaleFactCount] = {\n${body}};\n")
  # Write only on change so that dependants are not rebuilt needlessly.
  file(WRITE "${OUT}.tmp" "${text}")
  file(COPY_FILE "${OUT}.tmp" "${OUT}" ONLY_IF_DIFFERENT)
  file(REMOVE "${OUT}.tmp")
  return()
endif()

set(_quill_facts_tsv ${PROJECT_SOURCE_DIR}/data/locales/windows-locales.tsv)
set(_quill_facts_out ${QUILL_GENERATED_DIR}/quill/rtl/localefacts_table.inc)
file(MAKE_DIRECTORY ${QUILL_GENERATED_DIR}/quill/rtl)
add_custom_command(
  OUTPUT ${_quill_facts_out}
  COMMAND ${CMAKE_COMMAND} -DTSV=${_quill_facts_tsv} -DOUT=${_quill_facts_out}
          -P ${CMAKE_CURRENT_LIST_FILE}
  DEPENDS ${_quill_facts_tsv} ${CMAKE_CURRENT_LIST_FILE}
  COMMENT "Generating the Windows locale fact table"
  VERBATIM)
set(QUILL_RTL_GENERATED_SOURCES ${_quill_facts_out})
set_source_files_properties(${_quill_facts_out} PROPERTIES HEADER_FILE_ONLY ON GENERATED ON)
