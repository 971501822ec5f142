#!/bin/bash
# Builds Seedmote and starts it. ./run.sh --help says more.
set -uo pipefail

usage() {
  cat <<'TEXT'
./run.sh [--host HOST[:PORT] [--user USER] [--ssl]] [-- OPTION...]

Installs what is missing (Debian 12, root or sudo), builds Seedmote and starts it. Without options it starts
together with a private daemon and sample torrents, which nobody else can reach and which go with it.

  --host HOST[:PORT]  use your own Transmission daemon; the port is 9091 unless given. An IPv6 address stands
                      in brackets: [fd00::5]:9091
  --user USER         the user to log in as; the password is asked for, or read from standard input
  --ssl               the daemon is reached by SSL, through a web server in front of it
  --help              this text
  -- OPTION...        the rest goes to Seedmote itself, for example: -- --idiom phone

The settings of such a run are kept apart from those of an installed Seedmote, and forgotten at its end.
Without a display the window's picture is saved as seedmote.png and its list is printed; the exit status is not 0
then when no list came.
TEXT
}

started_in=$PWD
cd "$(dirname "${BASH_SOURCE[0]}")" || exit 1
source tools/common.sh

build=build/release
program=$PWD/$build/app/seedmote
host='' port='' user='' password='' ssl=False
passed_on=()
folder='' # of this run: its settings, and the private daemon's data
daemon_pid='' program_pid=''

wrong_use() { fail 2 "$* (see ./run.sh --help)"; }

# HOST, HOST:PORT, [IPv6] or [IPv6]:PORT into `host` and `port`. The brackets stay, as in an address.
read_host() {
  local bracketed='^(\[[0-9A-Za-z:.%]+\])(:(.*))?$' plain='^([^][/@:[:space:]]+)(:([^/:]*))?$'
  [[ $1 =~ $bracketed || $1 =~ $plain ]] ||
    wrong_use "--host wants HOST, HOST:PORT or [IPv6]:PORT, not \"$1\""
  host=${BASH_REMATCH[1]}
  port=9091
  [ -z "${BASH_REMATCH[2]}" ] || port=${BASH_REMATCH[3]}
  if ! [[ $port =~ ^[0-9]{1,5}$ ]] || ((10#$port < 1 || 10#$port > 65535)); then
    wrong_use "the port is a number from 1 to 65535, not \"$port\""
  fi
  port=$((10#$port))
}

read_options() {
  while [ $# -gt 0 ]; do
    case $1 in
      --host=* | --user=*)
        set -- "${1%%=*}" "${1#*=}" "${@:2}"
        continue
        ;;
      --host | --user)
        [ -n "${2-}" ] || wrong_use "$1 wants a value"
        if [ "$1" = --host ]; then read_host "$2"; else user=$2; fi
        shift
        ;;
      --ssl) ssl=True ;;
      --help | -h)
        usage
        exit 0
        ;;
      --)
        passed_on=("${@:2}")
        break
        ;;
      *) wrong_use "unknown option \"$1\"" ;;
    esac
    shift
  done
  [ -z "$user" ] || [ -n "$host" ] || wrong_use "--user goes with --host"
  [ $ssl = False ] || [ -n "$host" ] || wrong_use "--ssl goes with --host"
}

# One line of standard input, without an echo when that is a terminal.
read_password() {
  local status=0
  if [ -t 0 ]; then
    IFS= read -r -s -p "Password of $user at $host: " password || status=1
    say ''
  else
    IFS= read -r password || [ -n "$password" ] || status=1
  fi
  [ $status = 0 ] || fail 1 "there is no password on standard input"
}

build_program() {
  local packages=("${build_packages[@]}")
  [ -n "$host" ] || packages+=("${demo_packages[@]}")
  install_missing "${packages[@]}"
  if ! is_configured release; then
    say "Building Seedmote. The first time takes some minutes."
    configure release OFF >&2 || fail 1 "the build could not be prepared; see above"
  fi
  build release seedmote >&2 || fail 1 "the build failed; see above"
}

# stop PID SECONDS: ends a process of this run, in good time.
stop() {
  [ -n "$1" ] && kill -TERM "$1" 2>/dev/null || return 0
  local tenth
  for ((tenth = 0; tenth < $2 * 10; tenth++)); do
    kill -0 "$1" 2>/dev/null || return 0
    sleep 0.1
  done
  kill -KILL "$1" 2>/dev/null
}

clean_up() {
  trap '' INT TERM HUP
  stop "$program_pid" 5
  stop "$daemon_pid" 15
  [ -z "$folder" ] || rm -rf -- "$folder"
}

# The private daemon ends by itself when this shell dies, even by KILL: this shell alone holds the other end
# of its standard input.
start_demo() {
  coproc DEMO { exec tools/demo-daemon; }
  daemon_pid=$DEMO_PID
  read -r port folder <&"${DEMO[0]}" || fail 1 "the private daemon did not start; see above"
  host=127.0.0.1
}

# Stores the settings of this run in its own folder, and keeps it apart from a Seedmote that is open. The password is no argument, for others can read those.
store_settings() {
  [ -n "$folder" ] || folder=$(mktemp -d "${TMPDIR:-/tmp}/seedmote-run-XXXXXX") || exit 1
  export SEEDMOTE_ALONE=1 XDG_CONFIG_HOME=$folder/config XDG_STATE_HOME=$folder/state
  mkdir -m 700 "$XDG_CONFIG_HOME" "$XDG_STATE_HOME" || exit 1
  if [ -z "${XDG_RUNTIME_DIR:-}" ]; then # else Qt leaves one behind
    export XDG_RUNTIME_DIR=$folder/runtime
    mkdir -m 700 "$XDG_RUNTIME_DIR" || exit 1
  fi
  local version
  version=$("$program" --version) || fail 1 "Seedmote does not start; see above"
  printf '%s\n' "$password" | "$program" --set "IP Address=$host" --set "Port=$port" --set "UseSSL=$ssl" \
    --set "Username=$user" --set "Password=-" --set "FirstRun=3" --set "SavedVersion=${version##* }" ||
    fail 1 "the settings could not be stored; see above"
}

# In the background, so that a signal reaches this shell at once. File names count from where it was called.
run_program() {
  (cd "$started_in" && exec "$@") &
  program_pid=$!
  wait "$program_pid"
  local status=$?
  program_pid=''
  return $status
}

# Neither Wayland nor X, nor another platform that was asked for.
has_no_display() {
  [ -z "${WAYLAND_DISPLAY:-}${DISPLAY:-}" ] && [[ ${QT_QPA_PLATFORM:-offscreen} == offscreen* ]]
}

# Seedmote itself gives up after 60 seconds. Its log would bury the list, and is shown only when there is none.
save_picture() {
  local picture=${started_in%/}/seedmote.png
  say "There is no display: Seedmote's window will be saved as $picture, its list printed here."
  run_program timeout --kill-after=5 70 "$program" --snapshot "$folder/picture.png" "$@" 2>"$folder/log"
  local status=$?
  case $status in
    0)
      [ -e "$folder/picture.png" ] || fail 1 "Seedmote ended without a picture of its list"
      mv -f -- "$folder/picture.png" "$picture" || fail 1 "the picture could not be saved as $picture"
      say "Saved $picture."
      ;;
    2 | 3 | 4) # said in one sentence, after the log or without any
      grep '^seedmote: ' "$folder/log" >&2 || cat "$folder/log" >&2
      say "No picture was saved."
      exit "$status"
      ;;
    124 | 137)
      cat "$folder/log" >&2
      fail 1 "no list came in time, and Seedmote did not end by itself"
      ;;
    *)
      cat "$folder/log" >&2
      fail "$status" "Seedmote ended with status $status before it had saved its picture"
      ;;
  esac
}

read_options "$@"
[ -z "$user" ] || read_password
build_program
trap clean_up EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM
if has_no_display; then
  export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software
fi
[ -n "$host" ] || start_demo
store_settings
if has_no_display; then
  save_picture ${passed_on[@]+"${passed_on[@]}"}
else
  run_program "$program" ${passed_on[@]+"${passed_on[@]}"}
fi
