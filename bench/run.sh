#!/bin/bash
# Measures Seedmote and writes docs/performance.md. bench/run.sh --help says more.
set -uo pipefail

usage() {
  cat <<'TEXT'
bench/run.sh [PART...]

Installs what is missing (Debian 12, root or sudo), builds Seedmote and what measures it, and writes the tables of
docs/performance.md: all of them (about half an hour), or those of the parts that are named; the others stay as
they are. No display is needed. Let nothing else run meanwhile.

  json          reading and writing answers
  counts        their instructions, and those of a layout pass, by callgrind
  layout        the list's layout pass
  frames        the longest time without a frame
  starts        processor time and memory until the list is shown
  instructions  instructions of a start, by callgrind
  profile       what these are spent on, by callgrind
  rest          processor time at rest
TEXT
}

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
source tools/common.sh

all=(json counts layout frames starts instructions profile rest)
programs=$PWD/build/release/bench
seedmote=$PWD/build/release/app/seedmote
page=docs/performance.md
folder='' # of this run
server='' # the X server's process

# with_screen COMMAND...: in an X server of its own that keeps its picture in a file, and draws in software.
with_screen() {
  if [ -z "$server" ]; then
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -fbdir "$folder" -br -nolisten tcp \
      3>"$folder/number" >"$folder/x.log" 2>&1 &
    server=$!
  fi
  local tries
  for ((tries = 0; tries < 100; ++tries)); do
    [ -s "$folder/number" ] && break
    sleep 0.1
  done
  [ -s "$folder/number" ] || fail 1 "the X server does not start: $(cat "$folder/x.log")"
  DISPLAY=:$(cat "$folder/number") SEEDMOTE_BENCH_SCREEN=$folder/Xvfb_screen0 QT_QPA_PLATFORM=xcb \
    QT_QUICK_BACKEND=software LC_ALL=C.UTF-8 env -u DBUS_SESSION_BUS_ADDRESS "$@"
}

# with_log COMMAND...: its log goes to a file, which is shown when it fails.
with_log() {
  "$@" 2>"$folder/log" && return
  tail -n 20 "$folder/log" >&2
  return 1
}

# count COMMAND...: the instructions that it executes.
count() {
  QT_QPA_PLATFORM=offscreen valgrind --tool=callgrind --callgrind-out-file=/dev/null "$@" 2>&1 >/dev/null |
    sed -n 's/.*Collected : //p'
}

# count_each LESS MORE COMMAND...: the instructions of one of the times by which two runs differ; the times are
# the command's last argument.
count_each() {
  local less=$1 more=$2
  shift 2
  local fewer most
  fewer=$(count "$@" "$less")
  most=$(count "$@" "$more")
  echo $(((most - fewer) / (more - less)))
}

# ratio A B: A / B with two digits.
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }

# count_json WORK WHAT ITS-NAME AIM: one row.
count_json() {
  local bytes ours yardstick
  bytes=$("$programs/json-bench" "$1" "$2" 0)
  ours=$(count_each 1 6 "$programs/json-bench" "$1" "$2")
  yardstick=$(count_each 1 6 "$programs/json-bench" "yardstick-$1" "$2")
  printf '| %s %s, instructions a byte | | %s | %s | against %s |\n' "$1" "$3" "$4" \
    "$(ratio "$ours" "$bytes")" "$(ratio "$yardstick" "$bytes")"
}

counts() {
  printf '## Instructions\n\nBy callgrind, against RapidJSON where there are two numbers.\n\n'
  printf 'Measured on: %s.\n\n' "$("$programs/json-bench" machine)"
  printf '| what | reach | aim | measured | |\n|---|---|---|---|---|\n'
  count_json read 10000 '10,000 torrents' 20
  count_json read detail 'a detail answer of 2,000 files' 20
  count_json write 10000 '10,000 torrents' ''
  local rows
  for rows in 1000 10000; do
    printf '| layout pass of %s rows, instructions a row | | | %s | |\n' "$rows" \
      "$(ratio "$(count_each 1 4 "$programs/layout-bench" "$rows")" "$rows")"
  done
  echo
}

measure() {
  case $1 in
    json) "$programs/json-bench" ;;
    counts) counts ;;
    layout) QT_QPA_PLATFORM=offscreen with_log "$programs/layout-bench" ;;
    frames) with_log with_screen "$programs/frame-bench" ;;
    *) with_screen "$programs/whole-process" "$1" "$seedmote" ;;
  esac
}

# put FILE: the section into the page, in the place of the one of the same title.
put() {
  awk -v file="$1" -v title="$(head -n 1 "$1")" '
    function add(  line) { while ((getline line < file) > 0) print line; added = 1 }
    /^## / { skip = $0 == title; if (skip) add() }
    !skip { print }
    END { if (!added) add() }' "$page" >"$folder/page" && cp "$folder/page" "$page"
}

# All of it is read before it runs, so the file may be changed meanwhile.
main() {
  local parts=() part
  for part in "$@"; do
    case $part in
      --help | -h)
        usage
        exit 0
        ;;
      *)
        [[ " ${all[*]} " == *" $part "* ]] || fail 2 "there is no part \"$part\" (see bench/run.sh --help)"
        parts+=("$part")
        ;;
    esac
  done
  [ ${#parts[@]} -gt 0 ] || parts=("${all[@]}")

  install_missing "${build_packages[@]}" "${test_packages[@]}" "${bench_packages[@]}"
  configure release ON || fail 1 "the build could not be prepared; see above"
  build release bench || fail 1 "the build failed; see above"

  folder=$(mktemp -d) || exit 1
  trap '[ -z "$server" ] || kill "$server"; rm -rf "$folder"' EXIT
  [ -f "$page" ] || cat >"$page" <<'TEXT'
# What Seedmote costs

Written by `bench/run.sh`; the programs in `bench/` say how they measure. "Reach" is what must be reached, "aim" what
is wanted.

TEXT
  for part in "${parts[@]}"; do
    say "Measuring: $part"
    measure "$part" >"$folder/section" || fail 1 "$part could not be measured"
    put "$folder/section"
  done
  say "The tables are in $page."
  exit
}

main "$@"
