#!/usr/bin/env bash
# Installs the Debian packages of a directory in an empty system of amd64, as README.md says, and builds its program
# there by pkg-config alone; then those of i386 beside them, and once more: debian_test.sh DIRECTORY. MIRROR is where
# the system comes from.
# SPDX-License-Identifier: MIT
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
readme=$here/../../README.md
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# What the system gets: packages and programs, and what README.md says of them.
mkdir -p "$scratch/kvrs/build/package"
cp "$1"/*.deb "$scratch/kvrs/build/package"
cp "$here/consumer/consumer.c" "$here/debian_system.sh" "$scratch/kvrs"
sed -n '/^```c$/,/^```/{/^```/d;p}' "$readme" >"$scratch/kvrs/main.c"
sed -n '/^sudo apt install/,/^```/{/^```/d;s/^sudo //;p}' "$readme" >"$scratch/kvrs/commands.sh"
# shellcheck disable=SC2016  # the quotes are those of the document
sed -n 's/^It prints `\(.*\)`\..*/\1/p' "$readme" >"$scratch/kvrs/printed"
chmod -R a+rX "$scratch"

suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
# shellcheck disable=SC2016  # $1 is the system's directory
mmdebstrap --variant=minbase --architectures=amd64,i386 --include=gcc,libc6-dev,pkg-config \
  --aptopt='Acquire::Retries "3"' --customize-hook="copy-in '$scratch/kvrs' /" \
  --customize-hook='chroot "$1" bash /kvrs/debian_system.sh' \
  "$suite" /dev/null "${MIRROR:-http://deb.debian.org/debian}"
