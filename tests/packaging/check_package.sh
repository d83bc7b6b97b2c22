#!/usr/bin/env bash
# check_package.sh CHECK WORK: one check of what make_package.sh made, called like a function below.
set -euo pipefail
check=$1 work=$2
here=$(cd "$(dirname "$0")" && pwd)
app=brindlefox-apple-bridge
stage=$work/stage/usr
package=$(ls "$work"/*.deb)

fail() {
    echo "$*" >&2
    exit 1
}

own_folder() {
    folder=$(mktemp -d)
    trap 'rm -rf "$folder"' EXIT
}

# The documents are installed as folders; the places are not made everywhere.
installs_these_files() {
    diff -u "$here/installed_files.txt" <(cd "$stage" && find . -path ./share/doc -prune -o -path "./share/$app" -prune -o ! -type d -printf '%m %P\n' | LC_ALL=C sort -k 2)
}

installs_the_places() {
    diff -u <(echo "644 places.db") <(cd "$stage/share/$app" && find . ! -type d -printf '%m %P\n')
    # SQLite's magic number, and more than an empty database.
    [ "$(head -c 15 "$stage/share/$app/places.db")" = 'SQLite format 3' ] || fail "The places are no database."
    [ "$(stat -c %s "$stage/share/$app/places.db")" -gt 1000000 ] || fail "There are hardly any places."
}

package_has_the_installed_files() {
    diff -r "$work/stage" "$work/unpacked"
}

desktop_entry_is_valid() {
    local entry=$stage/share/applications/$app.desktop
    desktop-file-validate "$entry"
    [ -x "$stage/bin/$(sed -n 's/^Exec=//p' "$entry")" ] || fail "What Exec names is not installed."
    [ -f "$stage/share/icons/hicolor/scalable/apps/$(sed -n 's/^Icon=//p' "$entry").svg" ] || fail "There is no such icon."
}

metainfo_is_valid() {
    local metainfo=$stage/share/metainfo/org.brindlefox.AppleBridge.metainfo.xml
    appstreamcli validate --no-net "$metainfo"
    grep -q "<release version=\"$(dpkg-deb -f "$package" Version | sed 's/-.*//')\"" "$metainfo" || fail "It lacks this release."
}

unit_is_valid() {
    own_folder
    # The program is not where systemd looks for it, so a copy of the unit names its path.
    local unit=$folder/$app.service
    sed "s|^ExecStart=|&$stage/bin/|" "$stage/lib/systemd/user/$app.service" >"$unit"
    HOME=$folder XDG_RUNTIME_DIR=$folder systemd-analyze --user --man=no verify "$unit" 2>"$folder/complaints" ||
        fail "$(cat "$folder/complaints")"
    [ ! -s "$folder/complaints" ] || fail "$(cat "$folder/complaints")"
}

man_pages_are_clean_and_complete() {
    local page complaints options option
    for page in "$stage"/share/man/man1/*.gz; do
        complaints=$(MANROFFSEQ='' MANWIDTH=80 LC_ALL=C.UTF-8 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
        [ -z "$complaints" ] || fail "$page: $complaints"
    done
    for page in "$stage"/share/man/man1/*.gz; do
        options=$("$stage/bin/$(basename "$page" .1.gz)" --help | grep -oE '^ +--[a-z]+' | tr -d ' ')
        [ -n "$options" ] || fail "The program of $page names no options."
        for option in $options; do
            zcat "$page" | tr -d '\134' | grep -qe "$option" || fail "$page lacks $option."
        done
    done
}

package_says_what_it_needs() {
    local program
    dpkg-deb -f "$package" Depends | grep -q 'libc6 (>=' || fail "The libraries were not looked up."
    dpkg-deb -f "$package" Depends | grep -q 'libqt6quick6' || fail "The dashboard's libraries were not looked up."
    [ "$(dpkg-deb -f "$package" Version)" = "$(zcat "$stage/share/doc/$app/changelog.Debian.gz" |
        dpkg-parsechangelog -l - -S Version)" ] || fail "The changelog is of another version."
    for program in "$work"/unpacked/usr/bin/* "$work"/unpacked/usr/libexec/$app/* "$work"/unpacked/usr/lib/$app/modules/*; do
        file "$program" | grep -q ', stripped' || fail "$program has debugging symbols."
    done
}

package_has_no_faults() {
    lintian --fail-on error,warning --tag-display-limit 0 --info "$package"
}

unpacked_program_serves() {
    own_folder
    mkfifo "$folder/log"
    # Nothing of the caller's desktop reaches it.
    env -i PATH=/usr/bin:/bin HOME="$folder" "$work/unpacked/usr/bin/$app" 2>"$folder/log" &
    server=$!
    local line answer status=0
    exec 3<"$folder/log"
    trap 'kill -KILL $server 2>/dev/null || true; rm -rf "$folder"' EXIT
    while read -r line <&3; do
        echo "$line"
        [[ $line != *'Listening on 127.0.0.1:32123'* ]] || break
    done
    answer=$(curl -sS -w '\n%{http_code}' http://127.0.0.1:32123/health)
    [[ $answer == *'"code":"pairing_required"'*401 ]] || fail "An unpaired bridge answered: $answer"
    kill -TERM $server
    wait $server || status=$?
    [ $status -eq 0 ] || fail "Told to end, it ended with $status."
    [ -d "$folder/.local/share/$app" ] || fail "It left no profile in its home."
}

"$check"
