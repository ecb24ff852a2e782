#!/usr/bin/env bash
# build-qt.sh FOLDER: makes a static Qt 6.4 (Core, Gui, Widgets, Sql with SQLite, Test; the platforms windows, offscreen and minimal) for
# 64-bit Windows from Debian 12's own source packages, and puts it into FOLDER, which has to be new or empty: /opt/qt-windows.
# About an hour of processor time and 3 GB in WORK/qt-windows-build (here, where WORK is not set: in the folder of temporary files), which
# stays for another run and begins anew then.
# build-qt.sh --configure FOLDER stops before the long part.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/../packages.sh"

stop=
if [ "${1-}" = --configure ]; then
  stop=yes
  shift
fi
if [ $# -ne 1 ]; then
  sed -n 2,6p "$0" | cut -c3- >&2
  exit 2
fi
prefix=$(realpath -m "$1")
if [ -n "$(ls -A "$prefix" 2>/dev/null)" ]; then
  echo "$prefix is not empty." >&2
  exit 2
fi
work=$(realpath -m "${WORK:-${TMPDIR:-/tmp}}/qt-windows-build") # of its own: what an earlier run left there is removed
install_packages "${windows_packages[@]}" dpkg-dev tcl
mkdir -p "$work/apt/lists/partial" "$work/apt/cache/archives/partial"
cd "$work"

# The machine's own Debian mirrors, asked for sources.
rm -f apt/debian.*
if [ -f /etc/apt/sources.list.d/debian.sources ]; then
  sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources >apt/debian.sources
else
  sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >apt/debian.list
fi
sources() {
  apt-get -q -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$work/apt" -o Dir::State::lists="$work/apt/lists" \
    -o Dir::Cache="$work/apt/cache" -o APT::Sandbox::User="$(id -un)" "$@"
}
rm -rf ./*.dsc ./*.tar.* qt sqlite build
sources update
sources source --download-only qt6-base sqlite3
dpkg-source -x qt6-base_*.dsc qt
dpkg-source -x sqlite3_*.dsc sqlite

# Debian takes the SQLite that is in Qt's source out of it; Debian's own goes there, as the one file that it is made of.
(cd sqlite && ./configure -q >/dev/null && make -s sqlite3.c)
mkdir -p qt/src/3rdparty/sqlite
cp sqlite/sqlite3.[ch] qt/src/3rdparty/sqlite/

features=()
for feature in tabletevent dbus network concurrent printsupport xml direct2d directwrite3 direct2d1_1; do
  features+=("-DFEATURE_$feature=OFF")
done
cmake -S qt -B build -G Ninja -DCMAKE_TOOLCHAIN_FILE="$here/mingw.cmake" -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_BUILD_TYPE=MinSizeRel \
  -DBUILD_SHARED_LIBS=OFF -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DINPUT_opengl=no "${features[@]}"
[ -z "$stop" ] || exit 0
cmake --build build
cmake --install build
