#!/usr/bin/env bash
# Makes, once, the environment that runs the win32 build: an i386 Debian root holding Debian's i386
# Wine, entered by scripts/x86-run.sh through chroot. Only Wine lives there; the mingw build stays on
# the host. The host's package manager is left alone (an i386 architecture added to it would re-resolve
# the host's own packages against the i386 indexes, and a host Wine with a 32-bit side turns every
# win64 prefix into a WoW64 one).
#
# Where this kernel runs i386 programs, the root is made and used natively. Where it refuses them, the
# root is made with debootstrap --foreign and everything in it runs through qemu-i386-static, which is
# several times slower: the test command then keeps the 32-bit step to its subset.
#
# Idempotent: prints the root's folder and exits 0 once it is ready. Exits 3 with the reason on stderr
# when it cannot be made (not root, no network, no emulator): callers report that and go on.
# The cache is machine-wide, shared by every checkout: TC_X86_ENV (default /var/cache/tarnwick-x86).
#   scripts/x86-env.sh          make if missing, print the root
#   scripts/x86-env.sh --check  print the root if ready, else exit 3 without making anything
#   scripts/x86-env.sh --mode   print "native" or "qemu" for a ready root
set -euo pipefail

# Raised whenever what goes into the root changes: a root of another version is made anew.
version=1
packages=(wine wine32 fontconfig libfreetype6 libxrender1 libxext6 libxi6 libxrandr2 libxcursor1
          libxcomposite1 libxinerama1 libxfixes3 libgnutls30)

cache=${TC_X86_ENV:-/var/cache/tarnwick-x86}
rootfs=$cache/root
stamp=$rootfs/.tarnwick-x86

fail() { echo "x86-env: $*" >&2; exit 3; }
ready() { [ -f "$stamp" ] && [ "$(sed -n 's/^version=//p' "$stamp")" = "$version" ]; }

case "${1:-}" in
  --check) ready || exit 3; echo "$rootfs"; exit 0 ;;
  --mode) ready || exit 3; sed -n 's/^mode=//p' "$stamp"; exit 0 ;;
  "") ;;
  *) echo "usage: $0 [--check|--mode]" >&2; exit 2 ;;
esac

# The qemu path needs qemu-i386 registered for i386 programs, which lasts only until the next boot.
register_qemu() {
  # The F flag opens the emulator now, so that it also serves inside the chroot.
  local fmt=/proc/sys/fs/binfmt_misc
  [ -e "$fmt/register" ] || mount -t binfmt_misc binfmt_misc "$fmt" 2>>"${log:-/dev/null}" || return 1
  [ -e "$fmt/qemu-i386" ] && return 0
  # Debian ships no i386 entry for an amd64 host (its kernel usually runs i386 itself): the magic
  # and mask of an i386 ELF executable or shared object, as binfmt_misc reads them.
  local magic='\x7fELF\x01\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x02\x00\x03\x00'
  local mask='\xff\xff\xff\xff\xff\xfe\xfe\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff'
  [ -x /usr/bin/qemu-i386-static ] || return 1
  printf ':qemu-i386:M::%s:%s:/usr/bin/qemu-i386-static:F\n' "$magic" "$mask" >"$fmt/register" \
    2>>"${log:-/dev/null}"
}
usable() {
  [ "$(sed -n 's/^mode=//p' "$stamp")" != qemu ] || register_qemu ||
    fail "qemu-i386 could not be registered with binfmt_misc for the i386 root"
}

if ready; then usable; echo "$rootfs"; exit 0; fi
[ "$(id -u)" -eq 0 ] || fail "making the i386 root needs root (debootstrap, chroot)"
mkdir -p "$cache"
exec 9>"$cache/.lock"
flock 9
if ready; then usable; echo "$rootfs"; exit 0; fi

log=$cache/setup.log
: >"$log"
started=$SECONDS
step() { echo "x86-env: $* ($((SECONDS - started)) s)" >&2; }

# Does this kernel run an i386 program? A two-instruction static ELF answers it.
probe_native() {
  local dir
  dir=$(mktemp -d)
  printf '.globl _start\n_start: movl $1, %%eax\n movl $0, %%ebx\n int $0x80\n' >"$dir/t.s"
  local ok=1
  if as --32 "$dir/t.s" -o "$dir/t.o" 2>/dev/null && ld -m elf_i386 "$dir/t.o" -o "$dir/t" 2>/dev/null; then
    "$dir/t" 2>/dev/null && ok=0
  fi
  rm -rf "$dir"
  return $ok
}

install_host() {
  local missing=()
  for p in "$@"; do dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p"); done
  [ ${#missing[@]} -eq 0 ] && return 0
  step "installing ${missing[*]} on the host"
  apt-get update -qq >>"$log" 2>&1 || true
  DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "${missing[@]}" >>"$log" 2>&1
}

# The Debian archive this machine already uses: the first source that serves its own release.
archive() {
  local codename
  codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
  [ -n "$codename" ] || return 1
  local files=()
  for f in /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources; do
    [ -f "$f" ] && files+=("$f")
  done
  [ ${#files[@]} -ne 0 ] || return 1
  awk -v want="$codename" '
    function found(u) { sub(/\/+$/, "", u); print u; exit }
    # one-line format: deb [options] URI suite components
    $1 == "deb" { i = 2; if ($i ~ /^\[/) { while ($i !~ /\]$/) i++; i++ } if ($(i + 1) == want) found($i); next }
    # deb822 format: a stanza per blank-line-separated block
    /^[[:space:]]*$/ { if (uri != "" && suites ~ "(^| )" want "( |$)" && types ~ /(^| )deb( |$)/) found(uri); uri = suites = types = ""; next }
    tolower($1) == "types:" { $1 = ""; types = $0 " " }
    tolower($1) == "uris:" { uri = $2 }
    tolower($1) == "suites:" { $1 = ""; suites = $0 " " }
    END { if (uri != "" && suites ~ "(^| )" want "( |$)" && types ~ /(^| )deb( |$)/) found(uri) }
  ' "${files[@]}" | head -n 1
}

mode=native
if ! probe_native; then mode=qemu; fi
codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
mirror=$(archive) || true
[ -n "$mirror" ] || fail "no Debian archive serving '$codename' found in the machine's apt sources"
step "making the i386 root ($mode) from $mirror $codename in $rootfs"

host_packages=(debootstrap)
[ "$mode" = qemu ] && host_packages+=(qemu-user-static)
install_host "${host_packages[@]}" || fail "could not install ${host_packages[*]} (network?); see $log"

# Runs a command in the root with /proc and /dev, in a mount namespace of its own so that nothing
# stays mounted when it ends.
in_root() {
  unshare --mount --propagation private -- bash -c '
    root=$1; shift
    mount --rbind /dev "$root/dev" && mount --rbind /proc "$root/proc" && mount --rbind /sys "$root/sys" &&
    exec chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
         DEBIAN_FRONTEND=noninteractive "$@"' _ "$rootfs.new" "$@"
}


rm -rf "$rootfs.new" "$rootfs"
if [ "$mode" = native ]; then
  unshare --mount --propagation private debootstrap --arch=i386 --variant=minbase "$codename" "$rootfs.new" "$mirror" >>"$log" 2>&1 ||
    fail "debootstrap of the i386 root failed (network or archive?); see $log"
else
  register_qemu || fail "this kernel runs no i386 programs and qemu-i386 could not be registered with binfmt_misc; see $log"
  unshare --mount --propagation private debootstrap --foreign --arch=i386 --variant=minbase "$codename" "$rootfs.new" "$mirror" >>"$log" 2>&1 ||
    fail "debootstrap (first stage) of the i386 root failed (network or archive?); see $log"
  in_root /debootstrap/debootstrap --second-stage >>"$log" 2>&1 ||
    fail "debootstrap's second stage under qemu-i386 failed; see $log"
fi
step "i386 base system made; installing Wine in it"
cp /etc/resolv.conf "$rootfs.new/etc/resolv.conf" 2>/dev/null || true
# No daemon is ever started in the root.
printf '#!/bin/sh\nexit 101\n' >"$rootfs.new/usr/sbin/policy-rc.d"
chmod +x "$rootfs.new/usr/sbin/policy-rc.d"
in_root apt-get update -qq >>"$log" 2>&1 || true
in_root apt-get install -y -qq --no-install-recommends "${packages[@]}" >>"$log" 2>&1 ||
  fail "installing Wine in the i386 root failed; see $log"
in_root apt-get clean >>"$log" 2>&1 || true
in_root wine --version >>"$log" 2>&1 || fail "the i386 Wine does not start; see $log"
printf 'version=%s\nmode=%s\nmirror=%s\nseconds=%s\n' "$version" "$mode" "$mirror" "$((SECONDS - started))" \
  >"$rootfs.new/.tarnwick-x86"
mv "$rootfs.new" "$rootfs"
step "i386 root ready"
echo "$rootfs"
