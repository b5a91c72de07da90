#!/bin/bash
# Removes Tintwell: bash uninstall.command [VOLUME].
set -u
volume=${1:-}
plugin="$volume/Library/Application Support/Adobe/Common/Plug-ins/7.0/MediaCore/Tintwell.plugin"

stop() {
    echo "$1" >&2
    exit 1
}

if ps -axo comm= | grep -Eq '/Adobe (After Effects|Premiere|Media Encoder)[^/]*/.*Contents/MacOS/'; then
    stop "Nothing was removed: quit After Effects, Premiere Pro and Media Encoder, then try again."
fi
[ -e "$plugin" ] || stop "Tintwell is not installed: there is no $plugin."
echo "Removing $plugin. macOS asks for your password."
sudo rm -rf "$plugin" || stop "Tintwell is still there: $plugin could not be removed."
# Absent when it was copied by hand.
sudo pkgutil --volume "${volume:-/}" --forget org.tintwell.effect.pkg >/dev/null 2>&1
echo "Tintwell is removed. Projects keep their looks and show the effect as missing."
echo "Its log and settings stay in ~/Library/Application Support/Tintwell; delete that folder if you like."
