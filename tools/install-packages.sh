#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Installs what packages.txt names and is missing (Debian 12; as root or with sudo). Prints to standard error only.
set -euo pipefail
cd "$(dirname "$0")/.."

missing=()
while read -r package; do
    [ -n "$package" ] || continue
    status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done < packages.txt
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}" >&2
sudo=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Run this as root, or install sudo." >&2; exit 1; }
    sudo=(sudo)
fi
{
    "${sudo[@]}" apt-get update -q
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
} >&2
