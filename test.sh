#!/bin/bash
# Builds everything and runs all tests and checks. ./test.sh --help says more.
set -uo pipefail

usage() {
  cat <<'TEXT'
./test.sh [--preset NAME] [-- CTEST-OPTION...]

Installs what is missing (Debian 12, root or sudo), builds Seedmote with its tests, and runs the tests and the
checks of the code. No display is needed. Ends with ctest's own summary; fails when anything failed.

  --preset NAME     release (default), dev, asan or tsan
  --help            this text
  -- CTEST-OPTION   for example: -- -R client    -- -LE check    -- -C lint (with the slow check)
TEXT
}

cd "$(dirname "${BASH_SOURCE[0]}")" || exit 1
source tools/common.sh

preset=release
passed_on=()
while [ $# -gt 0 ]; do
  case $1 in
    --preset=*) preset=${1#*=} ;;
    --preset)
      [ -n "${2-}" ] || fail 2 "--preset wants a name"
      preset=$2
      shift
      ;;
    --help | -h)
      usage
      exit 0
      ;;
    --)
      passed_on=("${@:2}")
      break
      ;;
    *) fail 2 "unknown option \"$1\" (see ./test.sh --help)" ;;
  esac
  shift
done
case $preset in
  release | dev | asan | tsan) ;;
  *) fail 2 "there is no preset \"$preset\" (release, dev, asan, tsan)" ;;
esac

# The sanitizers of Debian 12's compiler lose their way where the kernel spreads addresses too widely.
steady=()
if [[ $preset == [at]san ]] && setarch -R true 2>/dev/null; then
  steady=(setarch -R)
fi

install_missing "${build_packages[@]}" "${test_packages[@]}"

# A locale with a decimal comma, for the tests that hold numbers to their form; seldom installed.
export LC_ALL=C.UTF-8 LOCPATH=$PWD/build/locales
if [ ! -f "$LOCPATH/de_DE.UTF-8/LC_NUMERIC" ]; then
  mkdir -p "$LOCPATH"
  localedef -i de_DE -f UTF-8 "$LOCPATH/de_DE.UTF-8" || fail 1 "there is no locale to test with"
fi

configure "$preset" ON || fail 1 "the build could not be prepared; see above"
build "$preset" all || fail 1 "the build failed; see above"
exec ${steady[@]+"${steady[@]}"} ctest --preset "$preset" --parallel "$(nproc)" \
  ${passed_on[@]+"${passed_on[@]}"}
