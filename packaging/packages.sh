# Sourced by ./run and ./test: the Debian packages that this tree needs, and the way they are installed.

build_packages=(
  cmake g++ ninja-build
  qtbase5-dev qttranslations5-l10n qttools5-dev qttools5-dev-tools libqt5sql5-sqlite
  fonts-dejavu-core libxcb1-dev libxxhash-dev
)

# What shows a window in a Wayland session without an X server.
wayland_packages=(qtwayland5)

# What songs are listened to with: the program does without it, and then offers no listening.
sound_packages=(libfluidsynth3 timgm6mb-soundfont qtmultimedia5-dev libqt5multimedia5-plugins gstreamer1.0-plugins-good)

# A message bus, real songs that nobody here wrote, a locale and time zones, other people's readers, and a display.
test_packages=(
  dbus-daemon ffmpeg lame openttd-openmsx
  locales tzdata
  fish zsh
  python3 python3-jsonschema python3-mido python3-mutagen sqlite3 strace
  at-spi2-core dbus gir1.2-atspi-2.0 python3-pyatspi
  xauth xvfb
)

deb_packages=(dpkg-dev file gzip python3 xz-utils)

qt6_packages=(qt6-base-dev qt6-multimedia-dev qt6-l10n-tools qt6-tools-dev qt6-tools-dev-tools qt6-translations-l10n libqt6sql6-sqlite libgl-dev)

# tests/processors/run: compilers for other processors, what runs s390x, and what is unpacked for each to build with.
bigendian_packages=(g++-s390x-linux-gnu mmdebstrap qemu-user-static)
i386_packages=(g++-i686-linux-gnu mmdebstrap)
processor_packages=(libc6-dev libqt5sql5-sqlite libstdc++-12-dev libxxhash-dev qtbase5-dev qttools5-dev)

# The compiler and the packer for Windows, the host's Qt 6 (whose tools build for the other), and what runs the programs here.
windows_packages=(
  cmake g++ ninja-build
  g++-mingw-w64-x86-64-posix nsis zip
  qt6-base-dev qt6-base-dev-tools qt6-l10n-tools qt6-tools-dev qt6-tools-dev-tools qt6-translations-l10n
  libxxhash-dev
  wine wine64
)

# What a window for Windows is shown with here.
windows_display_packages=(fonts-liberation imagemagick openbox xauth xdotool xvfb)

check_packages=(clang clang-format clang-tidy libclang-rt-14-dev)

# install_packages NAME...: installs those that are missing; elsewhere than on Debian it names them.
install_packages() {
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This is no Debian system. Please make sure that these are installed (Debian's names): $*" >&2
    return 0
  fi
  local name missing=()
  for name in "$@"; do
    dpkg-query -W -f='${db:Status-Status}\n' "$name" 2>/dev/null | grep -qx installed || missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing: ${missing[*]}" >&2
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "Please install these packages as root: ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get update -q >&2 &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}" >&2
}

# configure PRESET: configures once; the build notices changed build files by itself.
configure() {
  [ -f "build/$1/build.ninja" ] || cmake --preset "$1"
}
