# The modules: one library, built once for each processor target from the same sources.
# SPDX-License-Identifier: MIT

# name | bits | compiler target | directory below the prefix
#
# The directory of libraries is CMAKE_INSTALL_LIBDIR for the ABI that the compiler is for, and KVRS_INSTALL_LIBDIR_32, "lib32"
# if nothing else is said, for 32 bits beside it.
include(GNUInstallDirs)
set(KVRS_INSTALL_LIBDIR_32 lib32 CACHE STRING "Where the 32-bit libraries go if the compiler is one of 64 bits")
set(KVRS_LIBDIR_64 ${CMAKE_INSTALL_LIBDIR})
set(KVRS_LIBDIR_32 ${KVRS_INSTALL_LIBDIR_32})
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(KVRS_LIBDIR_32 ${CMAKE_INSTALL_LIBDIR})
endif()

# The dynamic loader looks into the glibc-hwcaps directories below a library path first and takes the best module
# that the processor can run, so lib/ holds the one that every 64-bit processor of the family understands.
set(KVRS_MODULE_TABLE
  "s8|32|-m32 -mssse3 -mfpmath=sse -mstackrealign|${KVRS_LIBDIR_32}"
  "v2|64|-march=x86-64-v2|${KVRS_LIBDIR_64}"
  "v3|64|-march=x86-64-v3|${KVRS_LIBDIR_64}/glibc-hwcaps/x86-64-v3"
  "v4|64|-march=x86-64-v4|${KVRS_LIBDIR_64}/glibc-hwcaps/x86-64-v4")

# The module of each ABI that programs link against, and where the libraries of the ABI are: bits | module | directory
set(KVRS_ABI_TABLE "32|s8|${KVRS_LIBDIR_32}" "64|v2|${KVRS_LIBDIR_64}")

# Sets <prefix>_bits, _flags and _dir for a module.
function(kvrs_module_row module prefix)
  foreach(row IN LISTS KVRS_MODULE_TABLE)
    string(REPLACE "|" ";" cells "${row}")
    list(GET cells 0 name)
    if(name STREQUAL module)
      list(GET cells 1 bits)
      list(GET cells 2 flags)
      list(GET cells 3 dir)
      separate_arguments(flags UNIX_COMMAND "${flags}")
      set(${prefix}_bits ${bits} PARENT_SCOPE)
      set(${prefix}_flags ${flags} PARENT_SCOPE)
      set(${prefix}_dir ${dir} PARENT_SCOPE)
      return()
    endif()
  endforeach()
  message(FATAL_ERROR "KVRS_MODULES: there is no module \"${module}\"; there are s8, v2, v3 and v4")
endfunction()

# The flags that every object of an ABI shares.
function(kvrs_abi_flags bits result)
  if(bits EQUAL 32)
    set(${result} -m32 PARENT_SCOPE)
  else()
    set(${result} -m64 PARENT_SCOPE)
  endif()
endfunction()

# What distinguishes a module of this library from other C++: no run-time library, nothing that the compiler may
# reorder, only the listed names visible.
set(KVRS_MODULE_COMPILE_FLAGS
  -ffp-contract=off -fno-math-errno -fno-exceptions -fno-rtti -fno-threadsafe-statics -fno-semantic-interposition
  -fvisibility=hidden -fvisibility-inlines-hidden -fopenmp -Wall -Wextra -Wshadow)

# Nothing missing, nothing that is not needed, and no table of addresses that stays writable.
set(KVRS_LINK_FLAGS -Wl,--as-needed -Wl,-z,defs -Wl,-z,relro -Wl,-z,now)
if(KVRS_SANITIZE MATCHES fuzzer)
  # What counts branches is in the program.
  list(REMOVE_ITEM KVRS_LINK_FLAGS -Wl,-z,defs)
endif()

# Processors of 2015 to 2019 decode a loop afresh in every turn when its jump touches a 32-byte boundary: up to half of
# a short loop's speed, by chance of placement. Elsewhere the padding costs nothing.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-Wa,-mbranches-within-32B-boundaries KVRS_KEEPS_BRANCHES_WITHIN_32B)
if(KVRS_KEEPS_BRANCHES_WITHIN_32B)
  list(APPEND KVRS_MODULE_COMPILE_FLAGS -Wa,-mbranches-within-32B-boundaries)
endif()

# A condition such as `src != 0 && dst != 0` as two jumps that are never taken, an operation each, in place of four that
# make and join its parts: the checks of a call are a good part of one on a short vector.
set(CMAKE_REQUIRED_FLAGS -Werror)  # clang takes it and says that it does not use it
check_cxx_compiler_flag("--param=logical-op-non-short-circuit=0" KVRS_JUMPS_FOR_CONDITIONS)
unset(CMAKE_REQUIRED_FLAGS)
if(KVRS_JUMPS_FOR_CONDITIONS)
  list(APPEND KVRS_MODULE_COMPILE_FLAGS --param=logical-op-non-short-circuit=0)
endif()

# Headers that nearly every source of a target needs, parsed once instead of in each: a second or more of each
# compilation. Each source still includes what it uses and compiles without this.
option(KVRS_PRECOMPILE "Precompile the headers that most sources share" ON)
function(kvrs_precompile target)
  if(KVRS_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
      # The first is for the compiler cache. The warnings would be about the compiler's own intrinsics, whose
      # suppression does not survive precompiling; clang gives them for our sources.
      target_compile_options(${target} PRIVATE -fpch-preprocess -Wno-uninitialized -Wno-maybe-uninitialized)
    endif()
  endif()
endfunction()

# The companion core library of an ABI, whose names have no version since users may put one of their own in its place, as target kvrscore_<bits>.
function(kvrs_add_core bits)
  kvrs_abi_flags(${bits} abi)
  add_library(kvrscore_${bits} SHARED core/core.c)
  target_include_directories(kvrscore_${bits} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_compile_options(kvrscore_${bits} PRIVATE ${abi} -fvisibility=hidden -Wall -Wextra)
  target_link_options(kvrscore_${bits} PRIVATE ${abi} ${KVRS_LINK_FLAGS})
  set_target_properties(kvrscore_${bits} PROPERTIES
    OUTPUT_NAME kvrscore SOVERSION 6 C_VISIBILITY_PRESET hidden EXPORT_NAME core
    LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/core/${bits})
endfunction()

# A module, as target kvrs_<module>.
function(kvrs_add_module module)
  kvrs_module_row(${module} row)
  kvrs_abi_flags(${row_bits} abi)
  set(target kvrs_${module})
  add_library(${target} SHARED ${KVRS_SOURCES})
  target_compile_features(${target} PRIVATE cxx_std_20)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    PRIVATE ${PROJECT_SOURCE_DIR})
  target_compile_definitions(${target} PRIVATE KVRS_TARGET_CPU="${module}")
  target_compile_options(${target} PRIVATE ${row_flags} ${KVRS_MODULE_COMPILE_FLAGS})
  kvrs_precompile(${target} ${PROJECT_SOURCE_DIR}/frame/simd.h)
  target_link_libraries(${target} PRIVATE kvrscore_${row_bits} m)
  target_link_options(${target} PRIVATE ${abi} -fopenmp -static-libgcc
    -Wl,--version-script=${KVRS_VERSION_SCRIPT} ${KVRS_ALIAS_LINK_OPTIONS}
    -Wl,-Bsymbolic-functions ${KVRS_LINK_FLAGS})
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME kvrs SOVERSION 6 EXPORT_NAME kvrs
    LINK_DEPENDS "${KVRS_VERSION_SCRIPT};${PROJECT_SOURCE_DIR}/frame/aliases.def"
    # The C driver links, so no C++ run-time library comes in.
    LINKER_LANGUAGE C
    BUILD_RPATH "$ORIGIN/../../core/${row_bits}"
    # The core library lies beside the module, or two directories above those of glibc-hwcaps.
    INSTALL_RPATH "$ORIGIN:$ORIGIN/../.."
    LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/modules/${module})
endfunction()
