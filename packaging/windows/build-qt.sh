#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# usage: build-qt.sh FOLDER
# Builds Debian's sources of Qt for 64-bit Windows, with the Qt tools of this machine, and adds what
# Orvane needs of Debian's sources of QCustomPlot, of Qt's module for SVG, of FFTW and of SQLite. What it makes
# stands in a folder of its own under FOLDER, named by version and flags, whose path is the one line of output;
# what is already there is kept. A first run takes an hour on two processors and 3 GB below FOLDER,
# 0.1 GB of which stay. A second run at once waits for the first.
set -euo pipefail
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
CACHE=$(realpath -m "$1")
readonly HERE=$here CACHE

# Everything that Orvane uses no part of is left out; libraries come with Qt's own sources, because
# those of this machine are not for Windows.
readonly FLAGS=(-DCMAKE_BUILD_TYPE=Release
  -DQT_QMAKE_TARGET_MKSPEC=win32-g++ -DQT_HOST_PATH=/usr
  -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake
  -DBUILD_SHARED_LIBS=OFF -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF
  -DQT_BUILD_TOOLS_WHEN_CROSSCOMPILING=OFF -DINPUT_opengl=no
  -DFEATURE_sql=OFF -DFEATURE_dbus=OFF -DFEATURE_opengl=OFF -DFEATURE_vulkan=OFF
  -DFEATURE_icu=OFF -DFEATURE_glib=OFF -DFEATURE_network=OFF -DFEATURE_tabletevent=OFF
  -DFEATURE_direct2d=OFF -DFEATURE_directwrite=OFF -DFEATURE_directwrite3=OFF
  -DFEATURE_concurrent=OFF -DFEATURE_xml=OFF -DFEATURE_testlib=ON
  -DFEATURE_system_zlib=OFF -DFEATURE_system_pcre2=OFF -DFEATURE_system_png=OFF
  -DFEATURE_system_jpeg=OFF -DFEATURE_system_freetype=OFF -DFEATURE_system_harfbuzz=OFF
  -DFEATURE_system_doubleconversion=OFF -DFEATURE_pkg_config=OFF
  -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)

tell() { printf '%s\n' "$*" >&2; }

# The sources that this machine's own package sources have, read as sources instead of as packages.
use_source_lists() {
  local work=$1 list
  [[ ! -d $work/apt ]] || return 0
  mkdir -p "$work/apt/sources" "$work/apt/lists/partial" "$work/apt/cache/archives/partial"
  for list in /etc/apt/sources.list.d/*.sources; do
    [[ -f $list ]] || continue
    sed 's/^Types:.*/Types: deb-src/' "$list" >"$work/apt/sources/$(basename "$list")"
  done
  for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [[ -f $list ]] || continue
    sed -n 's/^deb[ \t]\+/deb-src /p' "$list" >"$work/apt/sources/$(basename "$list")"
  done
  cat >"$work/apt/apt.conf" <<CONF
Dir::Etc::SourceList "/dev/null";
Dir::Etc::SourceParts "$work/apt/sources";
Dir::State::Lists "$work/apt/lists";
Dir::Cache "$work/apt/cache";
APT::Sandbox::User "root";
CONF
  APT_CONFIG=$work/apt/apt.conf apt-get -qq update >&2
}

# fetch WORK PACKAGE [VERSION]: its source, with Debian's patches, as WORK/PACKAGE.
fetch() {
  local work=$1 package=$2 version=${3:-}
  mkdir -p "$work/download/$package"
  (cd "$work/download/$package" &&
    APT_CONFIG=$work/apt/apt.conf apt-get -qq source --download-only "$package${version:+=$version}") \
    >&2 || return 1
  rm -rf "${work:?}/$package"
  dpkg-source --no-check -x "$work/download/$package"/*.dsc "$work/$package" \
    >"$work/$package.log" 2>&1 || { tell "See $work/$package.log"; return 1; }
}

# The parts of the sources that are built with Orvane itself, each once complete.
add_qcustomplot() {
  local work=$1 prefix=$2
  [[ ! -d $prefix/qcustomplot ]] || return 0
  use_source_lists "$work"
  fetch "$work" qcustomplot
  mkdir -p "$work/qcustomplot.part"
  cp "$work"/qcustomplot/qcustomplot.{h,cpp} "$work/qcustomplot.part/"
  cp "$work/qcustomplot/debian/copyright" "$work/qcustomplot.part/"
  mv "$work/qcustomplot.part" "$prefix/qcustomplot"
}

# Writing SVG. Debian's mirrors do not all have the source of Qt 6's module; this part of Qt 5's is
# the same but for two names that Qt 6 has no more.
add_svg() {
  local work=$1 prefix=$2 part=$1/svg.part
  [[ ! -d $prefix/svg ]] || return 0
  use_source_lists "$work"
  fetch "$work" qtsvg-opensource-src
  mkdir -p "$part/QtSvg"
  cp "$work"/qtsvg-opensource-src/src/svg/qsvggenerator.{h,cpp} "$part/"
  cp "$work/qtsvg-opensource-src/src/svg/qtsvgglobal.h" "$part/QtSvg/"
  cp "$work/qtsvg-opensource-src/debian/copyright" "$part/"
  : >"$part/QtSvg/qtsvg-config.h"
  sed -i -e '/qtextcodec\.h/d' -e '/setCodec(/d' -e 's/midRef(/mid(/' "$part/qsvggenerator.cpp"
  printf '#include "qsvggenerator.h"\n' >"$part/QSvgGenerator"
  mv "$part" "$prefix/svg"
}

# FFTW as a static library. Only the vectors of SSE2: those of AVX want more alignment of the stack
# than this compiler gives on Windows. Windows' own malloc aligns too little as well.
add_fftw() {
  local work=$1 prefix=$2
  [[ ! -d $prefix/fftw ]] || return 0
  use_source_lists "$work"
  fetch "$work" fftw3
  (cd "$work/fftw3" &&
    ./configure --quiet --host=x86_64-w64-mingw32 CC=x86_64-w64-mingw32-gcc-posix CFLAGS=-O3 \
      --prefix="$work/fftw.part" --disable-shared --disable-fortran --disable-doc --enable-sse2 \
      --with-our-malloc && make -s -C . install) >"$work/fftw.log" 2>&1 ||
    { tell "See $work/fftw.log"; return 1; }
  cp "$work/fftw3/debian/copyright" "$work/fftw.part/"
  mv "$work/fftw.part" "$prefix/fftw"
}

# SQLite as a static library. Debian's source is that of its developers: here, where Tcl runs, it becomes
# the one file that is compiled for Windows.
add_sqlite() {
  local work=$1 prefix=$2 part=$1/sqlite.part
  [[ ! -d $prefix/sqlite ]] || return 0
  use_source_lists "$work"
  fetch "$work" sqlite3
  mkdir -p "$work/sqlite" "$part/include" "$part/lib"
  (cd "$work/sqlite" && ../sqlite3/configure --quiet --disable-tcl --disable-readline &&
    make -s sqlite3.c sqlite3.h &&
    x86_64-w64-mingw32-gcc-posix -O2 -DSQLITE_OMIT_LOAD_EXTENSION -DSQLITE_THREADSAFE=1 -c sqlite3.c &&
    x86_64-w64-mingw32-ar rcs "$part/lib/libsqlite3.a" sqlite3.o) >"$work/sqlite.log" 2>&1 ||
    { tell "See $work/sqlite.log"; return 1; }
  cp "$work/sqlite/sqlite3.h" "$part/include/"
  cp "$work/sqlite3/debian/copyright" "$part/"
  mv "$part" "$prefix/sqlite"
}

build_qt() {
  local work=$1 prefix=$2 host=$3
  tell "Building Qt ${host%%+*} for Windows in $CACHE: an hour on two processors, once"
  rm -rf "$prefix"
  use_source_lists "$work"
  fetch "$work" qt6-base "$host"
  cmake -G Ninja -S "$work/qt6-base" -B "$work/build" -DCMAKE_INSTALL_PREFIX="$prefix" \
    -DCMAKE_TOOLCHAIN_FILE="$(realpath "$HERE/../../cmake/mingw.cmake")" "${FLAGS[@]}" \
    >"$work/configure.log" 2>&1 || { tell "See $work/configure.log"; return 1; }
  ninja -C "$work/build" >"$work/build.log" 2>&1 || { tell "See $work/build.log"; return 1; }
  ninja -C "$work/build" install >"$work/install.log" 2>&1 || { tell "See $work/install.log"; return 1; }
  cp "$work/qt6-base/debian/copyright" "$prefix/copyright"
  touch "$prefix/complete"
}

main() {
  local host prefix work
  # Moc and rcc of this machine generate code for the very version that they are of.
  host=$(dpkg-query -W -f='${source:Version}' qt6-base-dev)
  prefix=$CACHE/qt-${host%%+*}-$({
    printf '%s\n' "$host" "${FLAGS[@]}"
    x86_64-w64-mingw32-g++-posix --version
    cat "$HERE/../../cmake/mingw.cmake"
  } | sha256sum | cut -c1-12)
  work=$CACHE/qt-work
  mkdir -p "$CACHE"
  exec 9>"$CACHE/qt.lock"
  flock 9
  if [[ ! -f $prefix/complete || ! -d $prefix/qcustomplot || ! -d $prefix/svg ||
    ! -d $prefix/fftw || ! -d $prefix/sqlite ]]; then
    rm -rf "$work"
    mkdir -p "$work"
    [[ -f $prefix/complete ]] || build_qt "$work" "$prefix" "$host"
    add_qcustomplot "$work" "$prefix"
    add_svg "$work" "$prefix"
    add_fftw "$work" "$prefix"
    add_sqlite "$work" "$prefix"
    rm -rf "$work"
  fi
  printf '%s\n' "$prefix"
}

main
