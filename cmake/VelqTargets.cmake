# The one place where compiler flags live. Every target of the project links velq_flags.
add_library(velq_flags INTERFACE)
target_compile_options(velq_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -fno-omit-frame-pointer
  $<$<BOOL:${VELQ_WERROR}>:-Werror>
  # A precompiled header is found by its content; without this ccache refuses to share it.
  -fpch-preprocess)
# GCC 12 warns of overlaps in std::string that cannot be (its bug 105651), in optimised builds only.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(velq_flags INTERFACE -Wno-restrict)
endif()
target_compile_definitions(velq_flags INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)

if(VELQ_SANITIZE)
  target_compile_options(velq_flags INTERFACE -fsanitize=${VELQ_SANITIZE} -fno-sanitize-recover=all)
  target_link_options(velq_flags INTERFACE -fsanitize=${VELQ_SANITIZE})
endif()

if(VELQ_COVERAGE)
  # Threads count at the same time.
  target_compile_options(velq_flags INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(velq_flags INTERFACE --coverage)
endif()

# velq_library(NAME [QT_FREE] SOURCES ... [PUBLIC targets ...] [PRIVATE targets ...])
# A static library for one folder of src/, its headers included as "folder/Header.h".
function(velq_library name)
  cmake_parse_arguments(arg "QT_FREE" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE} velq_flags)
  if(arg_QT_FREE)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
  else()
    target_precompile_headers(${name} REUSE_FROM velq_pch)
  endif()
endfunction()
