#!/usr/bin/env bash
# Installs the system packages the build and tests need, when they are
# missing and we are root (a fresh machine). Otherwise it only checks.
set -euo pipefail
pkgs=(g++ cmake make googletest libgtest-dev libbenchmark-dev libreadline-dev python3)
missing=()
for p in "${pkgs[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
if [ "$(id -u)" -eq 0 ]; then
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq "${missing[@]}"
else
  echo "missing packages: ${missing[*]} (run as root, or install them)" >&2
  exit 1
fi
