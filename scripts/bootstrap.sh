#!/usr/bin/env bash
# Installs the build and test toolchain from Debian packages when a tool is missing.
# Idempotent and silent when everything is present.
set -euo pipefail

need=()
check() { command -v "$1" >/dev/null 2>&1 || need+=("$2"); }
check cmake cmake
check ninja ninja-build
check g++ g++
check clang++ clang
check x86_64-w64-mingw32-g++-posix g++-mingw-w64-x86-64
check i686-w64-mingw32-g++-posix g++-mingw-w64-i686
check x86_64-w64-mingw32-widl mingw-w64-tools
check wine wine
check xvfb-run xvfb
check xauth xauth
check python3 python3
[ -d /usr/src/googletest ] || need+=(googletest)
[ -x /usr/lib/wine/wine64 ] || need+=(wine64)
# libFuzzer and the sanitizer runtimes for clang
ls /usr/lib/llvm-*/lib/clang/*/lib/linux/libclang_rt.fuzzer-x86_64.a >/dev/null 2>&1 || need+=(libclang-rt-14-dev)
# Faces for the gallery's Devanagari, CJK and emoji captions (GDI draws emoji in one colour only).
# They are optional: installed apart, so that a missing font package never blocks the toolchain.
fonts=()
command -v fc-list >/dev/null 2>&1 || fonts+=(fontconfig)
font() { fc-list -q "$1" 2>/dev/null || fonts+=("$2"); }
font "Lohit Devanagari" fonts-lohit-deva
font "WenQuanYi Micro Hei" fonts-wqy-microhei
font "Symbola" fonts-symbola

[ ${#need[@]} -eq 0 ] && [ ${#fonts[@]} -eq 0 ] && exit 0

echo "bootstrap: installing ${need[*]} ${fonts[*]}" >&2
SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo"
# A failed index that the install does not need is common here: judge by the tools afterwards.
$SUDO apt-get update -qq >/dev/null 2>&1 || true
install() { DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "$@" >/dev/null 2>&1; }
if [ ${#need[@]} -ne 0 ] && ! install "${need[@]}"; then
  # One unavailable package fails the whole transaction: retry one by one.
  for package in "${need[@]}"; do install "$package" || true; done
fi
if [ ${#fonts[@]} -ne 0 ]; then
  install "${fonts[@]}" || echo "bootstrap: some gallery fonts could not be installed (${fonts[*]})" >&2
fi

missing=()
for t in cmake ninja clang++ x86_64-w64-mingw32-g++-posix i686-w64-mingw32-g++-posix wine xvfb-run; do
  command -v "$t" >/dev/null 2>&1 || missing+=("$t")
done
[ -d /usr/src/googletest ] || missing+=(googletest)
if [ ${#missing[@]} -ne 0 ]; then
  echo "bootstrap: still missing after install: ${missing[*]}" >&2
  exit 1
fi
