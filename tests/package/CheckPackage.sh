#!/bin/sh
# Makes the Debian package of the build tree $1 and checks what it installs:
# every file in its system place, a valid desktop entry, a MIME package that the
# database accepts, and the dependencies the program needs at run time.
set -eu
build=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT INT TERM
fail() { echo "$*" >&2; exit 1; }

cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work/out" >"$work/cpack.log" 2>&1 ||
    { cat "$work/cpack.log" >&2; fail "cpack failed"; }
deb=$(ls "$work"/out/*.deb)
dpkg-deb -c "$deb" | awk '{ print $6 }' | sed 's|^\./|/|' >"$work/contents"
for path in /usr/bin/gelvane \
            /usr/share/applications/gelvane.desktop \
            /usr/share/mime/packages/gelvane.xml \
            /usr/share/icons/hicolor/scalable/apps/gelvane.svg \
            /usr/share/doc/gelvane/README.md \
            /usr/share/doc/gelvane/GVLLicense.txt \
            /usr/share/doc/gelvane/VHistory.htm \
            /usr/share/doc/gelvane/Manual.htm; do
    grep -qx "$path" "$work/contents" || { cat "$work/contents" >&2; fail "missing from the package: $path"; }
done
for kind in pose character prop hair camera face hand light; do
    grep -qx "/usr/share/icons/hicolor/scalable/mimetypes/application-x-poser-$kind.svg" "$work/contents" ||
        fail "missing from the package: the $kind icon"
done

dpkg-deb -x "$deb" "$work/root"
desktop-file-validate "$work/root/usr/share/applications/gelvane.desktop" || fail "invalid desktop entry"
mkdir -p "$work/mime/packages"
cp "$work/root/usr/share/mime/packages/gelvane.xml" "$work/mime/packages/"
update-mime-database "$work/mime" >"$work/mime.log" 2>&1 || { cat "$work/mime.log" >&2; fail "the MIME package is refused"; }
for kind in pose character prop hair camera face hand light; do
    grep -qx "application/x-poser-$kind" "$work/mime/types" || fail "the MIME package lacks $kind"
done
depends=$(dpkg-deb -f "$deb" Depends)
for needed in libqt6svg6 xdg-utils libc6; do
    case "$depends" in *"$needed"*) ;; *) fail "Depends lacks $needed: $depends" ;; esac
done
echo "package ok: $(basename "$deb")"
