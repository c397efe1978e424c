#!/usr/bin/env bash
# wine_prefix.sh <wine> <folder name>: makes Wine's own folder ($WINEPREFIX) once, and gives its
# user a temporary folder of that name (one with accents), so every Windows run's sandbox (the
# X-Plane folder simhost makes there) has a path outside the ANSI range of characters: the plug-in
# and simhost must open, list and replace files in it through the wide-character calls.
set -eu
wine=$1
export WINEDEBUG=-all
[ -f "$WINEPREFIX/system.reg" ] || "$wine" wineboot -i
accented=$2
if ! compgen -G "$WINEPREFIX/drive_c/users/*/Temp/$accented" >/dev/null; then
    for name in TEMP TMP; do
        "$wine" reg add 'HKCU\Environment' /v "$name" /t REG_EXPAND_SZ /d "%USERPROFILE%\\Temp\\$accented" /f >/dev/null
    done
    "$wine" cmd /c mkdir '%TEMP%'
fi
