#!/bin/bash
# Builds the Debian package. ./package.sh --help says more.
set -uo pipefail

usage() {
  cat <<'TEXT'
./package.sh

Installs what is missing (Debian 12, root or sudo), builds Seedmote as a Debian package and checks it. Prints the
package's file name, build/seedmote_VERSION_ARCH.deb; the symbols for debuggers lie beside it. Install it with

  sudo apt install ./build/seedmote_*.deb
TEXT
}

cd "$(dirname "${BASH_SOURCE[0]}")" || exit 1
source tools/common.sh

case ${1-} in
  '') ;;
  --help | -h)
    usage
    exit 0
    ;;
  *) fail 2 "unknown option \"$1\" (see ./package.sh --help)" ;;
esac

folder=$PWD/build/package
tree=$folder/seedmote

# The working tree as it stands, and in it what Debian's tools read. Files keep their times, so that a second
# package is built quickly; but what was copied here from elsewhere is of no use.
lay_out_tree() {
  local version date
  version=$(sed -n 's/^project(seedmote VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
  [ -n "$version" ] || fail 1 "CMakeLists.txt names no version"
  date=$(git log -1 --format=%cD) || exit 1
  grep -qsxF "CMAKE_HOME_DIRECTORY:INTERNAL=$tree" "$tree"/obj-*/CMakeCache.txt || rm -rf "$tree"
  rm -rf "$tree/debian" "$folder"/*.*
  mkdir -p "$tree"
  tree_files . | tar --create --null --files-from=- | tar --extract --directory "$tree" || exit 1
  cp -a packaging/debian "$tree/debian"
  sed -e "s/@VERSION@/$version/" -e "s/@DATE@/$date/" packaging/debian/changelog.in >"$tree/debian/changelog"
}

build_package() {
  export DEB_BUILD_OPTIONS
  DEB_BUILD_OPTIONS="terse parallel=$(jobs_at_once)"
  if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_DIR
    CCACHE_DIR=$(ccache --get-config cache_dir)
  fi
  (cd "$tree" && dpkg-buildpackage --build=binary --no-pre-clean --unsigned-changes --unsigned-buildinfo) >&2
}

check_package() {
  local share=$tree/debian/seedmote/usr/share
  desktop-file-validate "$share"/applications/*.desktop >&2 &&
    appstreamcli validate --no-net "$share"/metainfo/*.xml >&2 &&
    tools/check-hardening "$tree/debian/seedmote/usr/bin/seedmote" >&2 &&
    lintian --allow-root --fail-on error,warning "$folder"/*.changes >&2
}

install_missing "${build_packages[@]}" "${package_packages[@]}"
lay_out_tree
build_package || fail 1 "the build failed; see above"
check_package || fail 1 "the package does not pass its checks; see above"
rm -f build/seedmote*.deb
mv "$folder"/seedmote*.deb build/ && ls build/seedmote_*.deb
