# How targets are made here: one per folder, warnings as errors, and a record of who may include whom.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
add_compile_options(-fPIC)  # one kind of code everywhere, so that libraries and programs share read headers
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

# Dozens of test programs are linked at every change of a room below them.
find_program(MOLD mold)
if(MOLD AND NOT QUORIN_FUZZ)
  add_link_options(-fuse-ld=mold)
endif()
set(CMAKE_CXX_FLAGS_DEBUG "-g1")  # lines for stack traces; the full data doubles every build

add_library(quorin_flags INTERFACE)
target_compile_options(quorin_flags INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(quorin_flags INTERFACE -Wno-restrict)  # false alarms on "literal" + std::string
endif()
if(QUORIN_SANITIZE)
  target_compile_options(quorin_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined)
  target_link_options(quorin_flags INTERFACE -fsanitize=address,undefined)
endif()
if(QUORIN_FUZZ)
  target_compile_options(quorin_flags INTERFACE -fsanitize=address,undefined,fuzzer-no-link)
  target_link_options(quorin_flags INTERFACE -fsanitize=address,undefined)
endif()

# What ccache asks for where headers are read once for many units.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(quorin_flags INTERFACE -fpch-preprocess)
else()
  target_compile_options(quorin_flags INTERFACE "SHELL:-Xclang -fno-pch-timestamp")
endif()

# quorin_read_once(NAME [test]) : the target shares the read headers (cmake/heads) of the group that its libraries name.
function(quorin_read_once name)
  set(group plain)
  if("${Q_LIBS}" MATCHES "Qt6::")
    set(group windows)
  elseif("${Q_LIBS}" MATCHES "Boost::")
    set(group sockets)
  endif()
  if("test" IN_LIST ARGN)
    string(REGEX REPLACE "^(plain|sockets)$" "test" group ${group})
    string(REGEX REPLACE "^windows$" "window_test" group ${group})
  endif()
  target_precompile_headers(${name} REUSE_FROM quorin_heads_${group})
endfunction()

set_property(GLOBAL PROPERTY QUORIN_HOUSE_PLAN "")

# quorin_library(NAME SOURCES ... [ROOMS ...] [LIBS ...])
# ROOMS are our own targets whose headers this one may include; LIBS are foreign libraries (none in the logic).
function(quorin_library name)
  cmake_parse_arguments(Q "" "" "SOURCES;ROOMS;LIBS" ${ARGN})
  add_library(${name} STATIC ${Q_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${Q_ROOMS} ${Q_LIBS} PRIVATE quorin_flags)
  quorin_read_once(${name})
  quorin_record(${name})
endfunction()

# quorin_program(NAME SOURCES ... [ROOMS ...] [LIBS ...]) : the same for an executable.
function(quorin_program name)
  cmake_parse_arguments(Q "" "" "SOURCES;ROOMS;LIBS" ${ARGN})
  add_executable(${name} ${Q_SOURCES})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PRIVATE ${Q_ROOMS} ${Q_LIBS} quorin_flags)
  quorin_read_once(${name})
  quorin_record(${name})
endfunction()

# Writes one line of the house plan: target, its source folder, the rooms it named, its sources.
function(quorin_record name)
  file(RELATIVE_PATH folder ${CMAKE_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  string(REPLACE ";" "," rooms "${Q_ROOMS}")
  string(REPLACE ";" "," sources "${Q_SOURCES}")
  if(Q_LIBS)
    set(foreign foreign)
  else()
    set(foreign plain)
  endif()
  set_property(GLOBAL APPEND_STRING PROPERTY QUORIN_HOUSE_PLAN "${name}|${folder}|${rooms}|${sources}|${foreign}\n")
endfunction()

function(quorin_write_house_plan)
  get_property(plan GLOBAL PROPERTY QUORIN_HOUSE_PLAN)
  file(WRITE ${CMAKE_BINARY_DIR}/house-plan.txt "${plan}")
endfunction()

# quorin_test(NAME SOURCES ... [ROOMS ...] [LIBS ...] [TIMEOUT s] [CASES files]) : a gtest program, each case known to
# ctest. CASES are case files of one folder, which the program knows as QUORIN_CASES.
function(quorin_test name)
  cmake_parse_arguments(Q "" "TIMEOUT" "SOURCES;ROOMS;LIBS;CASES;ENVIRONMENT" ${ARGN})
  if(NOT Q_TIMEOUT)
    set(Q_TIMEOUT 60)
  endif()
  add_executable(${name} ${Q_SOURCES})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${Q_ROOMS} ${Q_LIBS} GTest::gtest_main GTest::gmock quorin_flags)
  quorin_read_once(${name} test)
  if(Q_CASES)
    list(TRANSFORM Q_CASES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    set_target_properties(${name} PROPERTIES LINK_DEPENDS "${Q_CASES}")  # its list of tests is made when it is linked
    list(GET Q_CASES 0 first)
    get_filename_component(folder ${first} DIRECTORY)
    target_compile_definitions(${name} PRIVATE QUORIN_CASES="${folder}")
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${Q_TIMEOUT} ENVIRONMENT "${Q_ENVIRONMENT}")
endfunction()
