#!/bin/sh
# Installs the Debian packages that building, running and testing Obrinta need.
# Idempotent: asks dpkg first and calls apt only for what is missing.
set -eu

PACKAGES="
cmake ninja-build pkg-config g++ clang clang-format libclang-rt-14-dev
qt6-base-dev qt6-base-dev-tools qt6-declarative-dev qt6-qpa-plugins qt6-wayland libqt6svg6 qt6-svg-dev
qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-layouts
qml6-module-qtquick-window qml6-module-qtquick-templates qml6-module-qtquick-dialogs
qml6-module-qt-labs-folderlistmodel
qml6-module-qtqml-workerscript qml6-module-qtquick-shapes qml6-module-qttest qt6-declarative-dev-tools
libudev-dev libglib2.0-dev libglib2.0-bin
umockdev libumockdev0 gir1.2-umockdev-1.0 python3-gi
python3-dbusmock dbus dbus-bin dbus-daemon
xvfb xauth procps xdotool
udiskie trayer
"

missing=""
for p in $PACKAGES; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing="$missing $p"
    fi
done

[ -z "$missing" ] && exit 0

echo "Installing missing packages:$missing"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
# shellcheck disable=SC2086
$SUDO apt-get install -y -qq --no-install-recommends $missing
