#!/usr/bin/env bash
# The part of debian_test.sh that runs inside of the empty system.
# SPDX-License-Identifier: MIT
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
export DEBIAN_FRONTEND=noninteractive
debs=build/package

fail() {
  printf 'FAILED: %s\n' "$*" >&2
  exit 1
}

# Both programs of a directory of pkg-config files; the second one tells the module.
expect() {
  [[ $(./main | sed 's/ *$//') == "$(cat printed)" ]] || fail "main prints \"$(./main)\""
  local module
  module=$(./consumer)
  [[ $module == "$1" ]] || fail "the loader took module $module in place of $1"
  echo "module $module"
}

# As README.md says.
sed -i 's/apt install/apt-get install -qq -o Dpkg::Use-Pty=0/' commands.sh
bash -euc '. ./commands.sh'
# shellcheck disable=SC2046
cc consumer.c -o consumer $(pkg-config --cflags --libs kvrs)

# The loader takes the best variant that the processor can run; with its level masked, the next one.
for mask in none -AVX512F -AVX2; do
  if [[ $mask != none ]]; then export GLIBC_TUNABLES=glibc.cpu.hwcaps=$mask; fi
  best=$(/lib64/ld-linux-x86-64.so.2 --help | sed -n 's/^ *x86-64-\(v[0-9]\) (supported.*/\1/p' | head -1)
  expect "${best:-v2}"
done
unset GLIBC_TUNABLES

# The other ABI beside it, and the manual.
apt-get install -qq -o Dpkg::Use-Pty=0 gcc-multilib ./$debs/libkvrs6_*_i386.deb ./$debs/libkvrs-dev_*_i386.deb \
  ./$debs/libkvrs-doc_*.deb
export PKG_CONFIG_LIBDIR=/usr/lib/i386-linux-gnu/pkgconfig
for program in main consumer; do
  # shellcheck disable=SC2046
  cc -m32 $program.c -o $program $(pkg-config --cflags --libs kvrs)
done
expect s8
[[ -s /usr/share/doc/libkvrs-doc/html/index.html ]] || fail "no manual"

# They leave nothing behind.
# shellcheck disable=SC2046
dpkg --purge $(dpkg-query -W -f '${binary:Package}\n' 'libkvrs*') >/dev/null
if find / -xdev -path /kvrs -prune -o -path /proc -prune -o -name '*kvrs*' -not -path '/var/log/*' -print | grep .; then
  fail "the files above are left"
fi
