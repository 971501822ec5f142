# shellcheck shell=bash disable=SC2034
# What run.sh, test.sh, package.sh, bench/run.sh and the checks share. Read into bash with `source`; the working
# directory is the repository's root.

# What the program is built from, and what it loads while it runs. README.md gives each its reason.
build_packages=(g++ cmake ninja-build pkgconf qt6-base-dev qt6-base-private-dev qt6-declarative-dev
  qt6-declarative-dev-tools libcurl4-openssl-dev libplist-dev libpng-dev libwayland-dev librsvg2-bin
  qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript qml6-module-qtquick qt6-wayland
  fonts-dejavu-core)
demo_packages=(python3 transmission-daemon fonts-droid-fallback)
test_packages=(libgtest-dev libgmock-dev libssl-dev rapidjson-dev zlib1g-dev locales at-spi2-core gir1.2-atspi-2.0
  python3-gi dbus-daemon xvfb xdotool clang-format clang-tidy shellcheck desktop-file-utils appstream groff-base
  "${demo_packages[@]}")
bench_packages=(valgrind)
package_packages=(build-essential debhelper lintian desktop-file-utils appstream)

say() { printf '%s\n' "$*" >&2; }

# fail STATUS TEXT...: the last word of a script.
fail() {
  local status=$1
  shift
  say "${0##*/}: $*"
  exit "$status"
}

# Prints those of the given packages that are not installed.
missing_packages() {
  local have
  have=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "$@" 2>/dev/null)
  local package
  for package in "$@"; do
    grep -qxF "$package installed" <<<"$have" || printf '%s\n' "$package"
  done
}

# install_missing PACKAGE...: installs what is not there yet; asks apt for nothing when all is there.
install_missing() {
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    say "This is no Debian: nothing is installed. Needed are what Debian calls: $*"
    return
  fi
  local missing
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} -eq 0 ] && return
  local admin=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null ||
      fail 1 "packages are missing, and there is neither root nor sudo to install them.
Run as root: apt-get install --no-install-recommends ${missing[*]}"
    admin=(sudo)
  fi
  say "Installing what is missing: ${missing[*]}"
  "${admin[@]}" bash -s -- "${missing[@]}" <<'ADMIN' || fail 1 "the installation failed; see above"
set -u
export DEBIAN_FRONTEND=noninteractive
exec >&2
apt-get update </dev/null || echo "The lists of packages could not be brought up to date; going on." >&2

# The daemon's package brings a service that starts by itself and listens on every address. Only its program
# is wanted here, so the service is kept from starting, now and at the next boot.
policy=/usr/sbin/policy-rc.d
quiet=no
case " $* " in *" transmission-daemon "*) quiet=yes ;; esac
if [ $quiet = yes ] && [ ! -e $policy ]; then
  trap 'rm -f $policy' EXIT
  printf "%s\n" "#!/bin/sh" "case \$1 in transmission-daemon*) exit 101 ;; esac" >$policy
  chmod 755 $policy
fi
apt-get install -y --no-install-recommends "$@" </dev/null || exit 1
if [ $quiet = yes ]; then
  if command -v systemctl >/dev/null; then
    systemctl disable --now transmission-daemon.service
  else
    rm -f /etc/systemd/system/multi-user.target.wants/transmission-daemon.service
    update-rc.d transmission-daemon disable
  fi >/dev/null 2>&1
  echo "The service of transmission-daemon is left off (systemctl enable --now transmission-daemon)." >&2
fi
exit 0
ADMIN
}

# How many compilers run at once: one for each processor, as far as the memory reaches.
jobs_at_once() {
  local most
  most=$(awk '/^MemAvailable:/ {print int($2 / 1200000)}' /proc/meminfo 2>/dev/null)
  local count
  count=$(nproc)
  [ "${most:-$count}" -lt "$count" ] && count=$most
  [ "$count" -lt 1 ] && count=1
  echo "$count"
}

# True when the build folder of a preset is ready, and was not copied here from elsewhere.
is_configured() {
  [ -f "build/$1/build.ninja" ] && grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" "build/$1/CMakeCache.txt"
}

# configure PRESET TESTS: TESTS is ON or OFF.
configure() {
  local options=("-DSEEDMOTE_TESTS=$2")
  if command -v ccache >/dev/null; then options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
  if ! is_configured "$1"; then options+=(--fresh); fi
  cmake --preset "$1" "${options[@]}"
}

# build PRESET TARGET
build() { cmake --build "build/$1" --target "$2" --parallel "$(jobs_at_once)"; }

# Prints, with a zero byte after each, the files of the working tree whose names fit the patterns: all but
# those that git ignores. Fails when there are none.
tree_files() {
  local found=0 file
  while IFS= read -r -d '' file; do
    [ -f "$file" ] || continue
    printf '%s\0' "$file"
    found=1
  done < <(git ls-files -z --cached --others --exclude-standard -- "$@")
  [ $found = 1 ] || fail 1 "git names no file that fits: $*"
}
