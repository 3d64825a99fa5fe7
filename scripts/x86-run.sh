#!/usr/bin/env bash
# Runs a win32 program under the i386 Wine of scripts/x86-env.sh: the CMake emulator of the win32
# preset, as scripts/wine-run.sh is for win64. The program runs in the i386 root through chroot, in a
# mount namespace of its own that sees the checkout, the build tree, the host's /tmp (X socket, Wine
# servers) and fonts at their host paths, so that paths, Z: names and the display match the host's.
# A 64-bit program (a build tool such as the type library fixer) goes to the host's Wine instead,
# with a prefix of its own beside the 32-bit one.
# The Wine prefix belongs to the build tree that holds the program (as for win64) and is made on first use.
# Usage: x86-run.sh EXE [ARGS...]
#        x86-run.sh --command PROGRAM [ARGS...]   (e.g. wineserver -k, in the same prefix and root)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
checkout=$(dirname "$here")

command_mode=0
if [ "${1:-}" = --command ]; then command_mode=1; shift; fi
[ $# -ge 1 ] || { echo "usage: $0 EXE [ARGS...] | --command PROGRAM [ARGS...]" >&2; exit 2; }

if [ -z "${WINEPREFIX:-}" ]; then
  dir=$PWD
  [ $command_mode -eq 1 ] || dir=$(cd "$(dirname "$1")" && pwd)
  while [ "$dir" != / ] && [ ! -f "$dir/CMakeCache.txt" ]; do dir=$(dirname "$dir"); done
  if [ -f "$dir/CMakeCache.txt" ]; then WINEPREFIX="$dir/wineprefix"; else WINEPREFIX="$HOME/.wine-tarnwick-x86"; fi
fi
case "$WINEPREFIX" in /*) ;; *) WINEPREFIX="$PWD/$WINEPREFIX" ;; esac
export WINEPREFIX

# The machine field of the PE header: 014c is x86, 8664 is x64.
pe_machine() {
  local offset
  offset=$(od -An -t u4 -j 60 -N 4 "$1" 2>/dev/null | tr -d ' ') || return 0
  [ -n "$offset" ] && od -An -t x2 -j $((offset + 4)) -N 2 "$1" 2>/dev/null | tr -d ' '
}
if [ $command_mode -eq 0 ] && [ -f "$1" ] && [ "$(pe_machine "$1")" = 8664 ]; then
  WINEPREFIX="$WINEPREFIX-win64" exec "$here/wine-run.sh" "$@"
fi

if [ -z "${DISPLAY:-}" ]; then
  # Fallback for a lone run; the test script provides one display for everything.
  exec xvfb-run -a -s "-screen 0 1280x1024x24" "$0" "$@"
fi

rootfs=$("$here/x86-env.sh") || {
  echo "x86-run: no i386 environment (see the message above): cannot run $1" >&2
  exit 3
}

# Enters the root in a mount namespace of its own, so that nothing stays mounted when it ends.
# Arguments: ROOT COUNT PATH... (COUNT host folders seen at the same path inside) CWD PROGRAM ARGS...
read -r -d '' enter_root <<'EOF' || true
set -e
root=$1; count=$2; shift 2
mount --rbind /dev "$root/dev"
mount --rbind /proc "$root/proc"
mount --rbind /sys "$root/sys"
# The host's /tmp: the X socket and authority, and the folders where Debian's Wine keeps each
# prefix's server (the prefix links to it), so that "wineserver -k" on the host also ends the
# server of an i386 prefix.
mount --rbind /tmp "$root/tmp"
# The same faces as the host's Wine sees, so that text draws alike on both architectures.
if [ -d /usr/share/fonts ]; then
  mkdir -p "$root/usr/share/fonts"
  mount --bind -o ro /usr/share/fonts "$root/usr/share/fonts"
fi
bound=(/tmp)
for ((i = 0; i < count; i++)); do
  path=$1; shift
  covered=0
  for b in "${bound[@]}"; do
    case "$path/" in "$b"/*) covered=1 ;; esac
  done
  if [ $covered -eq 0 ] && [ -d "$path" ]; then
    mkdir -p "$root$path"
    mount --rbind "$path" "$root$path"
    bound+=("$path")
  fi
done
cwd=$1; shift
exec chroot "$root" /usr/bin/env -u LD_PRELOAD -u LD_LIBRARY_PATH PATH=/usr/sbin:/usr/bin:/sbin:/bin \
     HOME=/root sh -c 'cd "$0" && exec "$@"' "$cwd" "$@"
EOF

# Runs PROGRAM ARGS in the root with the current folder and the Wine settings carried over.
in_root() {
  local binds=("$checkout" "$PWD" "$WINEPREFIX")
  [ $command_mode -eq 1 ] || binds+=("$(cd "$(dirname "$exe")" && pwd)")
  if [ -n "${XAUTHORITY:-}" ] && [ -f "$XAUTHORITY" ]; then binds+=("$(dirname "$XAUTHORITY")"); fi
  unshare --mount --propagation private -- bash -c "$enter_root" _ "$rootfs" "${#binds[@]}" "${binds[@]}" "$PWD" "$@"
}

export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=}"
exe=$1
mkdir -p "$WINEPREFIX"
if [ ! -f "$WINEPREFIX/system.reg" ] || grep -q '^#arch=win64' "$WINEPREFIX/system.reg"; then
  # Tests start in parallel: only one of them makes the prefix.
  (
    flock 9
    if [ -f "$WINEPREFIX/system.reg" ] && grep -q '^#arch=win64' "$WINEPREFIX/system.reg"; then
      # A 64-bit prefix left in this tree by the host's Wine: the i386 Wine cannot use it.
      wineserver -k 2>/dev/null || true
      find "$WINEPREFIX" -mindepth 1 -delete
    fi
    if [ ! -f "$WINEPREFIX/system.reg" ]; then
      export WINEARCH=win32
      command_mode=1
      in_root wineboot -i >/dev/null 2>&1 || true
      # A crash ends the process instead of waiting for a debugger that nobody will attach.
      aedebug='HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug'
      in_root wine reg add "$aedebug" /v Auto /d 0 /f >/dev/null 2>&1 || true
      in_root wine reg add "$aedebug" /v Debugger /d "" /f >/dev/null 2>&1 || true
      in_root wineserver -w || true
    fi
  ) 9>"$WINEPREFIX.lock"
fi
if [ $command_mode -eq 1 ]; then
  in_root "$@"
else
  in_root wine "$@"
fi
