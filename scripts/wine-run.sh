#!/usr/bin/env bash
# Runs a Windows executable under Wine: the CMake emulator for ctest and the demo.
# The Wine prefix belongs to the build tree that holds the executable and is made on first use.
set -euo pipefail
exe=$1; shift
# A 32-bit program goes to the i386 Wine of scripts/x86-run.sh: the host's Wine has no 32-bit side.
# (PE machine field 014c, read through the header offset at 0x3c.)
if [ -f "$exe" ]; then
  pe=$(od -An -t u4 -j 60 -N 4 "$exe" 2>/dev/null | tr -d ' ')
  if [ -n "$pe" ] && [ "$(od -An -t x2 -j $((pe + 4)) -N 2 "$exe" 2>/dev/null | tr -d ' ')" = 014c ]; then
    exec "$(dirname "${BASH_SOURCE[0]}")/x86-run.sh" "$exe" "$@"
  fi
fi
if [ -z "${WINEPREFIX:-}" ]; then
  dir=$(cd "$(dirname "$exe")" && pwd)
  while [ "$dir" != / ] && [ ! -f "$dir/CMakeCache.txt" ]; do dir=$(dirname "$dir"); done
  if [ -f "$dir/CMakeCache.txt" ]; then WINEPREFIX="$dir/wineprefix"; else WINEPREFIX="$HOME/.wine-tarnwick"; fi
  export WINEPREFIX
fi
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=}"
if [ ! -f "$WINEPREFIX/system.reg" ]; then
  mkdir -p "$WINEPREFIX"
  # Tests start in parallel: only one of them creates the prefix.
  (
    flock 9
    if [ ! -f "$WINEPREFIX/system.reg" ]; then
      wineboot -i >/dev/null 2>&1 || true
      # A crash ends the process instead of waiting for a debugger that nobody will attach.
      aedebug='HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug'
      wine reg add "$aedebug" /v Auto /d 0 /f >/dev/null 2>&1 || true
      wine reg add "$aedebug" /v Debugger /d "" /f >/dev/null 2>&1 || true
      wineserver -w || true
    fi
  ) 9>"$WINEPREFIX.lock"
fi
if [ -z "${DISPLAY:-}" ]; then
  # Fallback for a lone run; the test and demo scripts provide one display for everything.
  exec xvfb-run -a -s "-screen 0 1280x1024x24" wine "$exe" "$@" 2> >(grep -v -e 'wine32 is missing' -e 'multiarch needs' -e 'dpkg --add-architecture' -e 'apt-get install wine32' >&2)
fi
exec wine "$exe" "$@" 2> >(grep -v -e 'wine32 is missing' -e 'multiarch needs' -e 'dpkg --add-architecture' -e 'apt-get install wine32' >&2)
