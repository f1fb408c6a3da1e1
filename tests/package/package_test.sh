#!/usr/bin/env bash
# One case of the tests of an installed tree, see CMakeLists.txt: package_test.sh SCRATCH CASE [ARGUMENT...]
# SPDX-License-Identifier: MIT
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
scratch=$1
stage=$scratch/stage

fail() {
  printf 'FAILED: %s\n' "$*" >&2
  exit 1
}

# Installs, and moves the result: what still points to the first place is found out by the other cases.
install() {
  rm -rf "$scratch/first" "$stage"
  "$CMAKE" --install "$1" --prefix "$scratch/first"
  mv "$scratch/first" "$stage"
  if grep -rlF "$scratch/first" "$stage"; then fail "the files above name the place of their installation"; fi
}

# An empty directory outside of the tree that is under test.
workplace() {
  rm -rf "${scratch:?}/$1"
  mkdir -p "$scratch/$1"
  cd "$scratch/$1"
}

lib_dir() { if [[ $1 == 32 ]]; then echo lib32; else echo lib; fi; }

expect_module() {
  local output=$1 bits=$2
  case $bits:$output in
    32:s8 | 64:v2 | 64:v3 | 64:v4) echo "module $output" ;;
    *) fail "the program reports \"$output\" as its $bits-bit module" ;;
  esac
}

# Every header compiles by itself, as C and as C++.
headers() {
  local header bits
  for header in $(cd "$stage/include" && find . -name '*.h' -printf '%P\n' | sort); do
    for bits in 32 64; do
      echo "$header, $bits-bit"
      # C wants a declaration in each translation unit, which a header of macros alone has not.
      printf '#include "%s"\nextern int unused;\n' "$header" |
        "$CC" -m$bits -std=c99 -pedantic -Wall -Wextra -Wstrict-prototypes -Werror -fsyntax-only \
          -I"$stage/include" -x c - || fail "C"
      echo "#include \"$header\"" |
        "$CXX" -m$bits -std=c++17 -pedantic -Wall -Wextra -Werror -fsyntax-only -I"$stage/include" -x c++ - ||
        fail "C++"
    done
  done
}

modules() { find "$stage" -name libkvrs.so.6 | sort; }

# The installed modules export and need what they should.
exports() {
  # shellcheck disable=SC2046
  "$PYTHON" "$here/../../tools/check_exports.py" $(modules)
}

# Debian's tools find the names that the symbols file tells them, and no others.
symbols() {
  if ! command -v dpkg-gensymbols >/dev/null; then exit 77; fi
  workplace symbols
  "$PYTHON" "$here/../../tools/make_debian_symbols.py" >listed
  local lib
  for lib in "$stage"/lib*; do
    echo "$lib"
    dpkg-gensymbols -c4 -q -plibkvrs6 -v6 -Ilisted -Ofound "-e$lib/libkvrs.so.6" "-e$lib/libkvrscore.so.6" ||
      fail "see above"
  done
}

pkgconfig() {
  local bits=$1 lib
  if ! command -v pkg-config >/dev/null; then exit 77; fi
  lib=$stage/$(lib_dir "$bits")
  workplace "pkgconfig-$bits"
  cp "$here/consumer/consumer.c" .
  export PKG_CONFIG_PATH=$lib/pkgconfig
  # shellcheck disable=SC2046
  "$CC" "-m$bits" -std=c99 -pedantic -Wall -Werror consumer.c -o consumer \
    $(pkg-config --cflags --libs kvrs) "-Wl,-rpath,$lib"
  expect_module "$(./consumer)" "$bits"
}

# The snippets of the manual, built as a user builds, print what stands beside them.
snippets() {
  local bits=$1 lib flags snippet failed=0
  if ! command -v pkg-config >/dev/null; then exit 77; fi
  lib=$stage/$(lib_dir "$bits")
  workplace "snippets-$bits"
  flags=$(PKG_CONFIG_PATH=$lib/pkgconfig pkg-config --cflags --libs kvrs)
  for snippet in "$here"/../../examples/snippets/*.c; do
    # shellcheck disable=SC2086
    "$CC" "-m$bits" -std=c99 -pedantic -Wall -Wextra -Werror "$snippet" -o snippet $flags "-Wl,-rpath,$lib"
    ./snippet | sed 's/ *$//' | diff - "${snippet%.c}.out" || {
      echo "$snippet prints something else"
      failed=1
    }
  done
  if ((failed)); then fail "see above"; fi
}

# The program of docs/first-steps.md takes a tone of 5 kHz out of two, and tells where the other one is.
first_steps() {
  local lib=$stage/lib
  if ! command -v pkg-config >/dev/null; then exit 77; fi
  workplace first_steps
  # shellcheck disable=SC2016  # the quotes are those of the document
  sed -n '/^```c$/,/^```/{/^```/d;p}' "$here/../../docs/first-steps.md" >first_steps.c
  # shellcheck disable=SC2046
  "$CC" -std=c99 -pedantic -Wall -Wextra -Werror first_steps.c -o first_steps \
    $(PKG_CONFIG_PATH=$lib/pkgconfig pkg-config --cflags --libs kvrs) "-Wl,-rpath,$lib"
  "$PYTHON" - <<'TONES'
import math, struct
def tone(level, frequency, i):
    return level * math.cos(math.tau * frequency / 48000 * i)
samples = [round(tone(8000, 375, i) + tone(16000, 5000, i)) for i in range(50000)]
open("in.raw", "wb").write(struct.pack("<50000h", *samples))
TONES
  [[ $(./first_steps in.raw out.raw) == "loudest around 375 Hz" ]] || fail "another frequency"
  "$PYTHON" - <<'LEVEL'
import struct
level = max(map(abs, struct.unpack("<50000h", open("out.raw", "rb").read())[1000:]))
assert 7900 <= level <= 8100, level
LEVEL
}

# build_by_cmake BITS PLACE
build_by_cmake() {
  local bits=$1
  workplace "$2"
  cp "$here/consumer/CMakeLists.txt" "$here/consumer/consumer.cpp" .
  "$CMAKE" -S . -B build "-DCMAKE_PREFIX_PATH=$stage" "-DCMAKE_C_FLAGS=-m$bits" "-DCMAKE_CXX_FLAGS=-m$bits"
  "$CMAKE" --build build
}

find_package() {
  build_by_cmake "$1" "find_package-$1"
  expect_module "$(build/consumer)" "$1"
}

# What find_package says to those who ask for what is not there, or before it can know for what.
refusals() {
  workplace refusals
  # expect_refusal LANGUAGES COMPONENT MESSAGE
  expect_refusal() {
    {
      echo "cmake_minimum_required(VERSION 3.13)"
      echo "project(refused LANGUAGES $1)"
      echo "find_package(kvrs 6 REQUIRED COMPONENTS $2)"
    } >CMakeLists.txt
    rm -rf build
    if "$CMAKE" -S . -B build "-DCMAKE_PREFIX_PATH=$stage" >said 2>&1; then fail "component $2 with $1 is found"; fi
    tr -s ' \n' ' ' <said | grep -qF "$3" || fail "said is: $(cat said)"
  }
  expect_refusal C nonsense 'kvrs has no component "nonsense"'
  expect_refusal NONE kvrs 'known only with C or C++ enabled'
  sed -i 's/LANGUAGES NONE/LANGUAGES C/' CMakeLists.txt
  "$CMAKE" -S . -B found "-DCMAKE_PREFIX_PATH=$stage" >/dev/null || fail "component kvrs is not found"
}

# Two copies of the tree at different places give the same bytes: the core library, and objects of a module.
reproducible() {
  local copy objects=(vector/logic.cpp.o filters/fir_state.cpp.o)
  workplace reproducible
  for copy in one other/place; do
    mkdir -p "$copy"
    (cd "$here/../.." && cp -r CMakeLists.txt cmake LICENSE core frame include vector stats synth transforms filters \
      comms "$scratch/reproducible/$copy")
    "$CMAKE" -S "$copy" -B "$copy/build" -G Ninja -DKVRS_MODULES=v2 -DKVRS_TESTS=OFF -DKVRS_PRECOMPILE=OFF \
      -DCMAKE_CXX_COMPILER_LAUNCHER=env -DCMAKE_C_COMPILER_LAUNCHER=env -DCMAKE_CXX_FLAGS=-g >/dev/null
    "$CMAKE" --build "$copy/build" --target kvrscore_64 "${objects[@]/#/CMakeFiles/kvrs_v2.dir/}"
  done
  cmp {one,other/place}/build/core/64/libkvrscore.so.6
  for object in "${objects[@]}"; do cmp {one,other/place}/build/CMakeFiles/kvrs_v2.dir/"$object"; done
}

# block LANGUAGE: the code blocks of README.md in that language.
block() { sed -n "/^\`\`\`$1\$/,/^\`\`\`/{/^\`\`\`/d;p}" "$here/../../README.md"; }

# What README.md tells users to write and to call works as it stands there, and prints what it says.
readme() {
  local printed
  # shellcheck disable=SC2016  # the quotes are those of the document
  printed=$(sed -n 's/^It prints `\(.*\)`\..*/\1/p' "$here/../../README.md")
  workplace readme
  mkdir build
  ln -s "$stage" build/stage
  block c >main.c
  # Of the commands, those for the installed tree.
  block sh | sed -n '/^export PKG_CONFIG_PATH/,/^cc /p' >commands.sh
  PATH=$scratch/readme/bin:$PATH
  mkdir bin
  ln -s "$(command -v "$CC")" bin/cc
  bash -euc '. ./commands.sh'
  [[ $(./main) == "$printed "* || $(./main) == "$printed" ]] || fail "main prints \"$(./main)\""

  block cmake >CMakeLists.txt
  "$CMAKE" -S . -B cmake "-DCMAKE_PREFIX_PATH=$PWD/build/stage"
  "$CMAKE" --build cmake
  [[ $(cmake/main) == "$(./main)" ]] || fail "built by CMake, main prints \"$(cmake/main)\""
}

# The dynamic loader takes the best module that the processor can run.
loader() {
  local mask best expected output
  build_by_cmake 64 loader >/dev/null
  for mask in none -AVX512F -AVX2; do
    if [[ $mask != none ]]; then export GLIBC_TUNABLES=glibc.cpu.hwcaps=$mask; fi
    # The loader lists the levels that it knows, best first, with a remark on those that it can use.
    best=$(/lib64/ld-linux-x86-64.so.2 --help | sed -n 's/^ *x86-64-\(v[0-9]\) (supported.*/\1/p' | head -1)
    expected=${best:-v2}
    output=$(build/consumer)
    echo "$mask: the loader's level is $expected, loaded is $output"
    if [[ $output != "$expected" ]]; then fail "loaded $output"; fi
    case $mask:$output in
      -AVX512F:v4 | -AVX2:v4 | -AVX2:v3) fail "a module beyond what $mask leaves" ;;
    esac
  done
}

shift
"$@"
