#!/bin/sh
# Runs Windows programs in a private Wine prefix that lives as long as one run of the tests.
#
#   wine.sh up NOTE                     makes a prefix in a temporary folder and writes its path into NOTE
#   wine.sh run NOTE DLLS PROGRAM ...   runs PROGRAM; its DLLs are also looked for in the folder DLLS
#   wine.sh pipe NOTE DLLS PROGRAM ...  the same with this script's own standard input
#   wine.sh down NOTE                   ends what still runs in the prefix and removes it
set -eu

verb=$1
note=$2
shift 2

# A display could show a dialogue that nobody answers; a time zone of the host would change results.
unset DISPLAY WAYLAND_DISPLAY TZ
export WINEARCH=win32 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml="

usePrefix() {
  if [ ! -s "$note" ]; then
    echo "wine.sh: no Wine prefix has been set up ($note is missing)" >&2
    exit 1
  fi
  folder=$(cat "$note")
  export WINEPREFIX="$folder/prefix"
}

makePrefix() {
  # The last command: a program that crashes ends at once instead of asking for a debugger.
  wineserver -p &&
    wineboot -i &&
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f
}

# Whatever uses windows or printers needs Wine's desktop process. Wine starts one that ends when it has been idle
# for some seconds, and the next program waits for its successor, up to 20 s. One that is started by hand stays; it
# can only take the place of the first when that has gone.
keepDesktop() {
  (while sleep 1; do wine explorer /desktop; done) < /dev/null > "$folder/desktop.log" 2>&1 &
  echo $! > "$folder/desktop"
}

removePrefix() {
  usePrefix
  if [ -s "$folder/desktop" ]; then kill "$(cat "$folder/desktop")" || true; fi
  wineserver -k || true # it says no when nothing runs any more
  wineserver -w || true
  rm -rf "$folder" "$note"
}

case $verb in
  up)
    # A run that was interrupted has left its prefix behind.
    if [ -s "$note" ]; then removePrefix; fi
    mkdir -p "$(dirname "$note")"
    folder=$(mktemp -d "${TMPDIR:-/tmp}/quillpress-wine.XXXXXX")
    mkdir "$folder/prefix"
    echo "$folder" > "$note"
    usePrefix
    # Windows starts here once, for all tests: -p keeps its server when no program runs. Its services live on,
    # so they must not hold the pipe through which ctest reads this script.
    makePrefix < /dev/null > "$folder/log" 2>&1 || {
      cat "$folder/log"
      exit 1
    }
    keepDesktop
    ;;
  run | pipe)
    usePrefix
    dlls=$(printf '%s' "$1" | tr / '\\')
    export WINEPATH="Z:$dlls"
    shift
    if [ "$verb" = pipe ]; then exec wine "$@"; fi
    # Programs that a test has started and left behind hold this file, and not the pipe that ctest reads to its end.
    output=$(mktemp "$folder/output.XXXXXX")
    wine "$@" < /dev/null > "$output" 2>&1 &
    program=$!
    tail --follow --lines=+1 --sleep-interval=0.05 --pid=$program "$output"
    status=0
    wait $program || status=$?
    rm -f "$output"
    exit $status
    ;;
  down)
    removePrefix
    ;;
  *)
    echo "wine.sh: unknown verb $verb" >&2
    exit 2
    ;;
esac
