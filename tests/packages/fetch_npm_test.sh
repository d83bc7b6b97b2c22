#!/usr/bin/env bash
# tools/fetch-npm, with an npm that has the same package under every name but @gone/..., and writes down how it is called: fetch_npm_test.sh SOURCES
set -euo pipefail
sources=$1
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
mkdir -p "$home/tree/tools" "$home/tree/packaging" "$home/bin" "$home/made/package/data"
cp "$sources/tools/fetch-npm" "$home/tree/tools/"
echo '{"scripts": {"install": "touch /should/not/run"}}' >"$home/made/package/package.json"
echo places >"$home/made/package/data/places.txt"
tar -czf "$home/package.tgz" -C "$home/made" package
cat >"$home/bin/npm" <<'NPM'
#!/usr/bin/env bash
echo "$*" >>"$NPM_CALLS"
[ "$1" = pack ] && [ ! -e "$NPM_OFFLINE" ] && [[ "$*" != *@gone/* ]] || { echo "npm error code ECONNREFUSED"; exit 1; }
while [ "$1" != --pack-destination ]; do shift; done
cp "$NPM_PACKAGE" "$2/package-1.2.3.tgz"
NPM
chmod +x "$home/bin/npm"
export PATH="$home/bin:$PATH" NPM_CALLS="$home/calls" NPM_OFFLINE="$home/offline" NPM_PACKAGE="$home/package.tgz"
integrity=sha512-$(sha512sum <"$home/package.tgz" | cut -d ' ' -f 1 | tr -d '\n' | sed 's/../\\x&/g' | xargs -0 printf '%b' | base64 -w0)
unpacked=$home/tree/build/npm/@scope/places

fail() { echo "FAILED: $1"; [ ! -e "$home/said" ] || cat "$home/said"; exit 1; }
list() { printf '# package version\n\n@scope/places 1.2.3 %s build the places\nother 1.0.0 %s test never\n' "$1" "$1" >"$home/tree/packaging/npm-packages.txt"; }
run() { "$home/tree/tools/fetch-npm" build >"$home/out" 2>"$home/said"; }

list "$integrity"
run || fail "a good package is fetched"
[ "$(cat "$unpacked/data/places.txt")" = places ] || fail "the package is unpacked"
grep -q 'pack .*--ignore-scripts.* @scope/places@1.2.3$' "$NPM_CALLS" || fail "the pinned version is packed, without scripts"
[ "$(wc -l <"$NPM_CALLS")" = 1 ] || fail "packages for other purposes are left alone"
[ ! -s "$home/out" ] || fail "standard output stays empty"

touch "$home/offline"
run || fail "what is there is not fetched again"
[ ! -s "$home/said" ] || fail "nothing is said when all is there"

rm -rf "$home/tree/build"
run && fail "an unreachable registry is a failure"
grep -q 'ECONNREFUSED' "$home/said" || fail "npm's own words are shown"
grep -q '@scope/places 1.2.3 could not be fetched' "$home/said" || fail "the package is named"
rm "$home/offline"

list "sha512-$(printf 'another' | base64 -w0)"
run && fail "another package under the name is a failure"
grep -q 'its sha512 differs' "$home/said" || fail "and the reason is said"
[ ! -e "$unpacked" ] || fail "nothing of it is unpacked"
[ -z "$(ls -A "$home/tree/build/npm")" ] || fail "nothing is left lying about"

list "$integrity"
run || fail "and a good one is fetched again"
echo changed >"$home/made/package/data/places.txt"
tar -czf "$home/package.tgz" -C "$home/made" package
integrity=sha512-$(sha512sum <"$home/package.tgz" | cut -d ' ' -f 1 | tr -d '\n' | sed 's/../\\x&/g' | xargs -0 printf '%b' | base64 -w0)
list "$integrity"
run || fail "a new version takes the place of the old"
[ "$(cat "$unpacked/data/places.txt")" = changed ] || fail "wholly"
rm -rf "$home/tree/build"
bad=sha512-$(printf 'another' | base64 -w0)
printf '@gone/first 1.0.0 %s build it\n@scope/forged 1.0.0 %s build it\n@scope/places 1.2.3 %s build it\n@gone/last 2.0.0 %s build it\n' \
    "$integrity" "$bad" "$integrity" "$integrity" >"$home/tree/packaging/npm-packages.txt"
run && fail "one that can't be fetched is a failure, whatever follows it"
[ "$(cat "$unpacked/data/places.txt")" = changed ] || fail "the others are fetched all the same"
grep -qx 'Not fetched: @gone/first 1.0.0, @scope/forged 1.0.0, @gone/last 2.0.0' "$home/said" || fail "all that failed are named"
[ "$(ls -A "$home/tree/build/npm" "$home/tree/build/npm/@scope")" = "$(printf '%s:\n@scope\n\n%s:\nplaces' "$home/tree/build/npm" "$home/tree/build/npm/@scope")" ] ||
    fail "and leave nothing lying about"

mkdir "$home/tools"
for tool in bash cat od tr base64 sed mkdir mktemp rm dirname; do ln -s "$(command -v $tool)" "$home/tools/"; done
PATH=$home/tools run && fail "without npm it fails"
grep -q 'There is no npm to fetch @gone/first with.' "$home/said" || fail "and says why"
echo "fetch-npm does as it should"
