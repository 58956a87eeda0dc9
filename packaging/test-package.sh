#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the packages in a fresh Debian, uses them there as a user would and removes them again;
# what is left then is a fault.
#
#   test-package.sh PACKAGE PYTHON_PACKAGE EXAMPLE_SURVEY FOLDER
#
# FOLDER keeps the base system between runs, so that only the first one fetches it.
set -euo pipefail
readonly PACKAGE=$1 PYTHON=$2 SURVEY=$3 FOLDER=$4
readonly SUITE=bookworm
readonly BASE=$FOLDER/$SUITE.tar ROOT=$FOLDER/root

say() { printf '%s\n' "$*"; }
trap 'say "FAILED at line $LINENO" >&2' ERR
fail() { say "FAILED: $*" >&2; exit 1; }
skip() { say "The package was not tested in a fresh system: $*"; exit 0; }
# Runs a command inside, without what the caller's session tells of itself.
inside() {
  env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/home/crew LC_ALL=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive chroot "$ROOT" "$@"
}
# What an installation may leave: nothing but what apt and dpkg note for themselves.
files() {
  find "$ROOT" -xdev \( -path "$ROOT/proc" -o -path "$ROOT/dev" -o -path "$ROOT/var/lib/apt" \
    -o -path "$ROOT/var/lib/dpkg" -o -path "$ROOT/var/cache" -o -path "$ROOT/var/log" \
    -o -path "$ROOT/home" -o -path "$ROOT/tmp" \) -prune -o -printf '%P\n' | sort
}

((EUID == 0)) || skip "only root can change the root folder"
command -v debootstrap >/dev/null || skip "debootstrap is not installed"
unshare --mount true 2>/dev/null || skip "no file systems can be mounted here"
if [[ -z ${ORVANE_PACKAGE_TEST:-} ]]; then
  # In a mount namespace of its own: however this ends, nothing stays mounted.
  ORVANE_PACKAGE_TEST=1 exec unshare --mount --propagation private "$0" "$@"
fi

mkdir -p "$FOLDER"
if [[ ! -f $BASE ]]; then
  # The mirror of this machine, so that none is written down here.
  mirror=$(apt-get indextargets --format '$(SITE)' "Codename: $SUITE" "Created-By: Packages" | head -1)
  [[ -n $mirror ]] || skip "this machine has no mirror of $SUITE"
  say "Fetching a fresh $SUITE..."
  rm -rf --one-file-system "$ROOT"
  debootstrap --variant=minbase "$SUITE" "$ROOT" "$mirror" >"$FOLDER/debootstrap.log" 2>&1 ||
    { tail -3 "$FOLDER/debootstrap.log"; skip "debootstrap failed (no network?)"; }
  tar -C "$ROOT" -cf "$BASE.part" . && mv "$BASE.part" "$BASE"
fi
say "Unpacking it..."
rm -rf --one-file-system "$ROOT"
mkdir -p "$ROOT"
tar -C "$ROOT" -xf "$BASE"
mount -t proc proc "$ROOT/proc"
cp /etc/resolv.conf "$ROOT/etc/resolv.conf"
apt-config dump Acquire >"$ROOT/etc/apt/apt.conf.d/90machine"  # a proxy, where there is one

inside apt-get -qq update
# What a desktop has anyway; removing the package must leave it as it is.
inside apt-get -y -qq install --no-install-recommends \
  desktop-file-utils shared-mime-info xdg-utils libfile-mimeinfo-perl fonts-liberation \
  hicolor-icon-theme \
  >"$FOLDER/apt.log" 2>&1 || fail "the desktop's packages: $FOLDER/apt.log"
cp "$PACKAGE" "$ROOT/tmp/orvane.deb"
cp "$PYTHON" "$ROOT/tmp/python3-orvane.deb"
mkdir "$ROOT/home/crew"
mkdir -m 700 "$ROOT/home/crew/run"
cp -r "$SURVEY" "$ROOT/home/crew/survey"
# First what it depends on, so that the list of files tells the package apart from it.
mapfile -t depends < <(for package in "$PACKAGE" "$PYTHON"; do dpkg-deb -f "$package" Depends; done |
  tr ',' '\n' | sed 's/(.*//; s/|.*//; s/ //g' | sort -u)
inside apt-get -y -qq install --no-install-recommends "${depends[@]}" >>"$FOLDER/apt.log" 2>&1 ||
  fail "the dependencies: $FOLDER/apt.log"
files >"$FOLDER/before.txt"

# One to upgrade from: it has a file that this version no longer has.
older=$FOLDER/older
rm -rf "$older" "$FOLDER/older.deb"
dpkg-deb -R "$PACKAGE" "$older"
echo gone >"$older/usr/share/orvane/older.txt"
sed -i 's/^Version: .*/Version: 0.9/' "$older/DEBIAN/control"
dpkg-deb --root-owner-group -b "$older" "$ROOT/tmp/older.deb" >/dev/null
inside apt-get -y -qq install --no-install-recommends /tmp/older.deb >>"$FOLDER/apt.log" 2>&1 ||
  fail "the older package: $FOLDER/apt.log"
[[ -f $ROOT/usr/share/orvane/older.txt ]] || fail "the older package has not what it should"
settings="$ROOT/home/crew/.config/Local AppWizard-Generated Applications/Orvane.conf"
mkdir -p "$(dirname "$settings")"
printf '[Coil%%20Models]\nName1=Kept\n' >"$settings"

say "Installing the packages over an older version..."
inside apt-get -y -qq install --no-install-recommends /tmp/orvane.deb /tmp/python3-orvane.deb \
  >>"$FOLDER/apt.log" 2>&1 || fail "the packages: $FOLDER/apt.log"
files | comm -13 "$FOLDER/before.txt" - >"$FOLDER/installed.txt"
grep -q 'share/orvane/guide.html' "$FOLDER/installed.txt" || fail "the guide is not installed"
[[ ! -e $ROOT/usr/share/orvane/older.txt ]] || fail "a file of the older version stays"

inside orvane-cli --version
inside orvane --version
inside orvane-cli table text /home/crew/survey/SIP/Startup.tbl
inside grep -q 'TECH' /home/crew/survey/SIP/Startup.txt || fail "the listing lacks TECH"

# Open a file of each kind, a folder too; still running after two seconds is what is hoped for.
for file in SIP/Startup.tbl SIP/2417.TSS MT/2417.TS3 Calibration/2417.CLB TDIP/2417.trs .; do
  status=0
  inside env QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=/home/crew/run \
    timeout 2 orvane "/home/crew/survey/$file" 2>"$FOLDER/start.log" || status=$?
  ((status == 124)) || fail "orvane $file ended with $status: $(cat "$FOLDER/start.log")"
done

grep -q 'Name1=Kept' "$settings" || fail "the settings of the older version are gone"

# What is loaded only when it is needed is there, too.
inside orvane-cli waveform netcdf /home/crew/survey/SIP/2417.TSS
[[ -s $ROOT/home/crew/survey/SIP/2417.nc ]] || fail "no NetCDF was written"
inside python3 -c '
import orvane
table = orvane.Table("/home/crew/survey/SIP/Startup.tbl")
series = orvane.TimeSeries("/home/crew/survey/SIP/2417.TSS")
record = series[0]
assert table["TECH"] > 0 and record.counts.shape[1] > 0
print("orvane in Python:", len(series), "records of", record.counts.shape)'

# NAME TYPE PROGRAM [CONTENT]: what a double click on such a file does.
check_type() {
  local type program
  cp "${4:-/dev/null}" "$ROOT/home/crew/$1"
  type=$(inside xdg-mime query filetype "/home/crew/$1") || fail "xdg-mime knows no type of $1"
  program=$(inside xdg-mime query default "$type") || fail "xdg-mime knows nothing of $type"
  [[ $type == "application/x-orvane-$2" && $program == "$3" ]] || fail "$1 is $type, for $program"
}
check_type a.tbl tbl orvane.desktop
check_type A.TBL tbl orvane.desktop
check_type unnamed tbl orvane.desktop "$SURVEY/SIP/Startup.tbl"
check_type a.TSS waveform orvane.desktop
check_type a.tsk waveform orvane.desktop
check_type a.TS3 waveform orvane.desktop
check_type a.clb calibration orvane.desktop
check_type a.CLC calibration orvane.desktop
check_type a.TS12 band ""
check_type a.trs stack orvane.desktop
check_type 2.TFS schedule ""

# A folder is offered to it, but opened by it only where nobody else does.
[[ $(inside xdg-mime query default inode/directory) == zz-orvane-folder.desktop ]] || fail "no folder is offered to it"
manager=$ROOT/usr/share/applications/ywindow.desktop
printf '[Desktop Entry]\nType=Application\nName=W\nExec=w %%f\nMimeType=inode/directory;\n' >"$manager"
inside update-desktop-database
[[ $(inside xdg-mime query default inode/directory) == ywindow.desktop ]] || fail "it took the folders from their manager"
rm "$manager"
inside update-desktop-database

# A memory card of a box has neither links nor rights of files.
on_card() {
  local image=$FOLDER/card.img card=/media/card
  mkdir -p "$ROOT$card"
  rm -f "$image"
  truncate -s 16M "$image"
  mkfs.vfat "$image" >/dev/null
  mount -o loop "$image" "$ROOT$card" 2>/dev/null || { rmdir "$ROOT$card"; say "No vfat here: not tested on a card."; return 0; }
  cp "$SURVEY/SIP/Startup.tbl" "$ROOT$card"
  inside orvane-cli table set "$card/Startup.tbl" SITE=CARD
  [[ $(inside orvane-cli table get "$card/Startup.tbl" SITE) == SITE=CARD ]] || fail "not saved on the card"
  inside orvane-cli table startup "$card/Startup.tbl" --out "$card/boxes" >/dev/null
  inside sh -c "orvane-cli table to-v1 $card/boxes/*.tbl" >/dev/null
  ! find "$ROOT$card" -name '.orvane-*' | grep . || fail "something is left on the card"
  umount "$ROOT$card"
  rmdir "$ROOT$card"
  rm -f "$image"
}
on_card

say "Removing them..."
inside apt-get -y -qq purge orvane python3-orvane >>"$FOLDER/apt.log" 2>&1 || fail "removal: $FOLDER/apt.log"
files >"$FOLDER/after.txt"
diff "$FOLDER/before.txt" "$FOLDER/after.txt" || fail "the files before (<) and after (>) differ"
for database in applications/mimeinfo.cache mime/globs2; do
  ! grep -q orvane "$ROOT/usr/share/$database" 2>/dev/null || fail "$database still knows orvane"
done
umount "$ROOT/proc"
rm -rf --one-file-system "$ROOT"
say "The packages install, run and leave nothing behind: $(wc -l <"$FOLDER/installed.txt") files and folders."
