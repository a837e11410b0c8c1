# The house rules of a target in one place: language level, warnings, sanitizers, Qt code generators.

add_library(zoBuildFlags INTERFACE)
add_library(Zo::BuildFlags ALIAS zoBuildFlags)
set_target_properties(zoBuildFlags PROPERTIES EXPORT_NAME BuildFlags)
install(TARGETS zoBuildFlags EXPORT zo) # of libraries that are installed; only what they need when linked counts
target_compile_features(zoBuildFlags INTERFACE cxx_std_17)
target_compile_definitions(zoBuildFlags INTERFACE
  QT_NO_FOREACH QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050d00
  # The sources keep to what Qt 5 and 6 both have.
  $<$<EQUAL:${ZO_QT},6>:QT_DEPRECATED_WARNINGS_SINCE=0x050f00>)
# no-gnu-unique: a unique symbol would pin a module in memory and make its unloading a no-op.
target_compile_options(zoBuildFlags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
  -Wcast-align -Woverloaded-virtual -Wformat=2
  $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
  $<$<BOOL:${ZO_WERROR}>:-Werror>)
if(ZO_SANITIZE)
  target_compile_options(zoBuildFlags INTERFACE -fsanitize=${ZO_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  target_link_options(zoBuildFlags INTERFACE -fsanitize=${ZO_SANITIZE})
endif()
if(ZO_COVERAGE)
  # atomic: sessions have threads.
  target_compile_options(zoBuildFlags INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(zoBuildFlags INTERFACE --coverage)
endif()

# Properties shared by all own targets: generators of Qt, hidden symbols, position independent code.
function(zo_setup_target name)
  set_target_properties(${name} PROPERTIES
    AUTOMOC ON AUTOUIC ON AUTORCC ON
    AUTORCC_OPTIONS "--format-version;1" # without the times of the files: the same sources give the same bytes
    CXX_EXTENSIONS OFF
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${name} PRIVATE Zo::BuildFlags)
endfunction()

# zo_add_module(<name> OBJECTS <object library> COMPONENT <component>): a plug-in file lib<name>.so that exports only the
# symbols in <name>.map of the current folder.
function(zo_add_module name)
  cmake_parse_arguments(ARG "" "OBJECTS;COMPONENT" "" ${ARGN})
  set(map "${CMAKE_CURRENT_SOURCE_DIR}/${name}.map")
  add_library(${name} MODULE "${map}")
  zo_setup_target(${name})
  target_link_libraries(${name} PRIVATE ${ARG_OBJECTS})
  target_link_options(${name} PRIVATE "LINKER:--version-script=${map}" "LINKER:--no-undefined")
  set_target_properties(${name} PROPERTIES
    PREFIX "lib" LINKER_LANGUAGE CXX LINK_DEPENDS "${map}"
    INSTALL_RPATH "$ORIGIN/.." # the kernel's library, for programs that have not loaded it yet
    LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib/zo")
  install(TARGETS ${name} LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/zo" COMPONENT ${ARG_COMPONENT})
endfunction()

# zo_compile_quickly(<test>): most of the time of a whole build goes into tests, each of which is compiled to be run for a
# second. They are optimised little, and the headers of the toolkit are read once for each folder of tests (which the
# toolkit names in a macro).
function(zo_compile_quickly name)
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O1>)
  if(NOT ZO_PRECOMPILE)
    return()
  endif()
  file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
  string(REPLACE "/" "_" folder "${folder}")
  set(headers zoTestHeaders_${folder})
  if(NOT TARGET ${headers})
    set(support "${PROJECT_SOURCE_DIR}/Tests/Support")
    add_library(${headers} OBJECT "${support}/zoTestHeaders.cpp" "${support}/zoTestHeaders.h")
    zo_setup_target(${headers})
    set_target_properties(${headers} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    target_link_libraries(${headers} PRIVATE Zo::TestSupport)
    target_compile_options(${headers} PRIVATE $<$<CONFIG:Release>:-O1>)
    target_precompile_headers(${headers} PRIVATE "${support}/zoTestHeaders.h")
  endif()
  target_precompile_headers(${name} REUSE_FROM ${headers})
  # Mostly empty, and then quicker without.
  set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/mocs_compilation.cpp" PROPERTIES
    SKIP_PRECOMPILE_HEADERS ON)
endfunction()

# zo_add_test(<name> LABELS <area>... [DESKTOP | NETNS] [SOURCES <file>...] [LIBS <target>...] [ENV <VAR=value>...]
#   [TIMEOUT <s>]):
# one QtTest executable per class, labelled by area: kernel, host, tools, or the room of the module in small letters;
# <name>.cpp is the first source. Runs offscreen and from any folder; with DESKTOP on an X display of its own with a window
# manager, skipped where these are not installed; with NETNS on a cluster of namespaces, not by default: ctest -C Netns.
function(zo_add_test name)
  cmake_parse_arguments(ARG "DESKTOP;NETNS" "TIMEOUT" "SOURCES;LIBS;LABELS;ENV" ${ARGN})
  if(NOT ARG_LABELS)
    message(FATAL_ERROR "${name} needs LABELS: the area that it tests, see CONTRIBUTING.md")
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  # Sanitizers look at every step, and counting without optimisation takes as long.
  if(ZO_SANITIZE OR ZO_COVERAGE)
    math(EXPR ARG_TIMEOUT "5 * ${ARG_TIMEOUT}")
  endif()
  add_executable(${name} ${name}.cpp ${ARG_SOURCES})
  zo_setup_target(${name})
  target_link_libraries(${name} PRIVATE Zo::TestSupport ${ARG_LIBS})
  zo_compile_quickly(${name})
  set(platform offscreen)
  set(launcher)
  if(ARG_DESKTOP)
    set(platform xcb)
    set(launcher "${PROJECT_SOURCE_DIR}/dev/desktop")
    list(APPEND ARG_LABELS desktop)
    # Nothing here draws with GL, and its drivers leak.
    list(APPEND ARG_ENV QT_XCB_GL_INTEGRATION=none)
  endif()
  set(configurations)
  if(ARG_NETNS)
    set(launcher "${PROJECT_SOURCE_DIR}/dev/netns")
    list(APPEND ARG_LABELS netns)
    set(configurations CONFIGURATIONS Netns)
  endif()
  add_test(NAME ${name} COMMAND ${launcher} $<TARGET_FILE:${name}> ${configurations})
  set_tests_properties(${name} PROPERTIES
    TIMEOUT ${ARG_TIMEOUT}
    LABELS "${ARG_LABELS}"
    SKIP_RETURN_CODE 77
    ENVIRONMENT "QT_QPA_PLATFORM=${platform};LC_ALL=C.UTF-8;${ZO_SANITIZER_ENVIRONMENT};${ARG_ENV}")
endfunction()

# zo_count_tests(): at the end of each folder of tests. With ZO_COVERAGE, what is counted while a test runs, by it and by the
# programs that it starts, goes to coverage-data/<test> of the build folder, in a tree like that of the build folder:
# dev/coverage adds them up, dev/mutants asks which test reaches which line.
function(zo_count_tests)
  if(NOT ZO_COVERAGE)
    return()
  endif()
  string(REGEX MATCHALL "/" levels "${PROJECT_BINARY_DIR}")
  list(LENGTH levels strip)
  get_property(tests DIRECTORY PROPERTY TESTS)
  foreach(test IN LISTS tests)
    set_property(TEST ${test} APPEND PROPERTY ENVIRONMENT
      "GCOV_PREFIX=${PROJECT_BINARY_DIR}/coverage-data/${test}" "GCOV_PREFIX_STRIP=${strip}")
  endforeach()
endfunction()

# zo_add_benchmark(<name> [GATE] [SOURCES <file>...] [LIBS <target>...]): built with the rest, run by `ctest -C Benchmark`,
# where those with GATE fail when they miss a goal.
function(zo_add_benchmark name)
  cmake_parse_arguments(ARG "GATE" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${name}.cpp ${ARG_SOURCES})
  zo_setup_target(${name})
  target_link_libraries(${name} PRIVATE benchmark::benchmark Qt::Widgets Qt::Xml ${ARG_LIBS})
  set(gate)
  if(ARG_GATE)
    set(gate --gate)
  endif()
  add_test(NAME ${name} CONFIGURATIONS Benchmark COMMAND ${name} ${gate})
  set_tests_properties(${name} PROPERTIES
    LABELS benchmark RUN_SERIAL ON TIMEOUT 1800
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()
