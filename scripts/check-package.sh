#!/usr/bin/env bash
# Checks a built package (by default the newest in dist/): its control fields,
# that every file a school needs is in it, that the program in it shows the
# package's version, and that AppStream accepts its metainfo; lintian too, when
# it is installed, failing on its errors only.
set -euo pipefail
cd "$(dirname "$0")/.."

deb="${1:-$(ls -t dist/tavrino_*.deb 2>/dev/null | head -n 1)}"
[ -f "$deb" ] || { echo "No package: run scripts/package.sh first." >&2; exit 1; }
fail() { echo "check-package: $*" >&2; exit 1; }

dpkg-deb --info "$deb"
dpkg-deb --contents "$deb"

[ "$(dpkg-deb --field "$deb" Section)" = education ] || fail "the section is not education"
depends="$(dpkg-deb --field "$deb" Depends)"
for needed in libqt6widgets6 libqt6gui6 libqt6texttospeech6 qt6-speech-flite-plugin fonts-liberation; do
    grep -q "$needed" <<<"$depends" || fail "Depends lacks $needed: $depends"
done

root="$(mktemp -d)"
trap 'rm -rf "$root"' EXIT
dpkg-deb --extract "$deb" "$root"
metainfo=usr/share/metainfo/org.tavrino.Tavrino.metainfo.xml
for file in usr/bin/tavrino usr/bin/tavrino-voice usr/share/applications/tavrino.desktop \
            "$metainfo" usr/share/man/man1/tavrino.1.gz usr/share/man/man1/tavrino-voice.1.gz \
            usr/share/doc/tavrino/copyright \
            usr/share/doc/tavrino/changelog.gz usr/share/icons/hicolor/scalable/apps/tavrino.svg \
            usr/share/icons/hicolor/48x48/apps/tavrino.png; do
    [ -f "$root/$file" ] || fail "$file is missing"
done

version="$(dpkg-deb --field "$deb" Version)"
shown="$(QT_QPA_PLATFORM=offscreen "$root/usr/bin/tavrino" --version)"
[ "$shown" = "Tavrino $version" ] || fail "the program says '$shown', the package is $version"

appstreamcli validate --no-net "$root/$metainfo"

if command -v lintian >/dev/null; then
    lintian --info --fail-on error "$deb"
fi
echo "check-package: $deb is fine"
