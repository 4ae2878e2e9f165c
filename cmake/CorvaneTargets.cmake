# Flags that every target shares, and the one way to declare a layer.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_library(corvane_flags INTERFACE)
target_compile_options(corvane_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Werror
  # The last bit of a dual value decides which widths pricing picks: no fused operations.
  -ffp-contract=off)
# What is released is hardened as Debian's own packages are.
target_compile_options(corvane_flags INTERFACE
  $<$<CONFIG:Release>:-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
target_link_options(corvane_flags INTERFACE LINKER:-z,relro LINKER:-z,now)
target_include_directories(corvane_flags INTERFACE "${PROJECT_SOURCE_DIR}/src")
# The time of a header is no part of what is precompiled of it, so that ccache may keep it.
target_compile_options(corvane_flags INTERFACE
  "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")

# corvane_in_batches(): in this folder and those below, the sources of a target are compiled some twenty
# at a time where CORVANE_IN_BATCHES is on: the headers and templates that they share take most of the
# time. Names in unnamed namespaces must then differ within a target.
macro(corvane_in_batches)
  set(CMAKE_UNITY_BUILD ${CORVANE_IN_BATCHES})
  set(CMAKE_UNITY_BUILD_BATCH_SIZE 20 CACHE STRING "Sources in a batch; 0: all of a target")
endmacro()

# corvane_no_false_alarms(): where GCC 12 inlines std::string's operations it sees copies out of bounds
# that are not there (GCC bugs 105329 and 105651). From here on in this folder and those below it does
# not look for them; Clang and the sanitizers do.
macro(corvane_no_false_alarms)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread
      -Wno-array-bounds)
  endif()
endmacro()

# corvane_companion_flags(): from here on in this folder and those below, the flags are those of the
# companions, and what is precompiled is what is precompiled for them.
macro(corvane_companion_flags)
  set(CORVANE_COMPANION_FLAGS "" CACHE STRING "Flags of the companions beyond those of the layers")
  set(CORVANE_PRECOMPILED corvane_core)
  if(CORVANE_COMPANION_FLAGS)
    separate_arguments(companion_flags UNIX_COMMAND "${CORVANE_COMPANION_FLAGS}")
    add_compile_options(${companion_flags})
    set(CORVANE_PRECOMPILED corvane_formats)
  endif()
endmacro()

# corvane_layer(NAME [DEPENDENCY ...]): the static library corvane_NAME of all sources in this
# folder. The dependencies are the only layers whose headers it may include. A folder of headers
# alone gives an interface library.
function(corvane_layer name)
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  list(FILTER sources EXCLUDE REGEX "(/|_)main\\.cpp$")
  if(sources)
    add_library(corvane_${name} STATIC ${sources})
    set(scope PUBLIC)
  else()
    add_library(corvane_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_link_libraries(corvane_${name} ${scope} corvane_flags Qt6::Core Qt6::Core5Compat ${ARGN})
  if(sources)
    corvane_precompile(corvane_${name})
  endif()
endfunction()

# corvane_precompile(TARGET): what every other source includes takes most of the time of compiling it,
# so that is compiled once, for the target CORVANE_PRECOMPILED and all others of the same flags. Every
# file still includes what it needs: release-clang builds without this.
function(corvane_precompile target)
  if(target STREQUAL CORVANE_PRECOMPILED)
    target_precompile_headers(${target} PRIVATE
      <algorithm> <array> <cmath> <filesystem> <fstream> <functional> <iostream> <map> <memory>
      <optional> <set> <span> <sstream> <string> <string_view> <tuple> <unordered_map> <utility>
      <vector> <QByteArray> <QDir> <QFile> <QHash> <QLinkedList> <QString> <QStringList>)
  else()
    target_precompile_headers(${target} REUSE_FROM ${CORVANE_PRECOMPILED})
  endif()
endfunction()
