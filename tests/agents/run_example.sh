#!/usr/bin/env bash
# run_example.sh PLAYGROUND EXAMPLE STORY: runs one example of an agent and compares what it says. The stories: `refused`, the
# user has not switched contacts on; `allowed`, everything is; `alone`, the bridge has ended meanwhile.
set -euo pipefail
playground=$1 example=$2 story=$3
examples=$(cd "$(dirname "$0")/../../examples" && pwd)
folder=$(mktemp -d)
server=
trap '[ -z "$server" ] || kill -KILL $server 2>/dev/null || true; rm -rf "$folder"' EXIT
export TMPDIR=$folder

fail() {
    echo "$*" >&2
    exit 1
}

case $example in
*.py) agent=(python3 "$examples/$example") ;;
*.ts)
    # The Node.js of Debian 12 doesn't read types.
    esbuild "$examples/$example" --format=esm --outfile="$folder/agent.mjs" --log-level=warning
    agent=(node "$folder/agent.mjs")
    ;;
*) agent=("$examples/$example") ;;
esac

switches=all
contacts='some.'
if [ "$story" = refused ]; then
    switches=calendar.calendars.read,reminders.items.read,reminders.items.create,reminders.items.delete
    contacts='Brindlefox capability is disabled: contacts.read; the user can switch it on in the dashboard.'
fi

mkfifo "$folder/line"
"$playground" --serve --capabilities "$switches" </dev/null >"$folder/line" &
server=$!
read -r told <"$folder/line" || fail "The playground does not serve."

if [ "$story" = alone ]; then
    kill -TERM $server
    wait $server
    status=0
    "${agent[@]}" <<<"$told" >"$folder/said" 2>"$folder/complaint" || status=$?
    [ $status -eq 1 ] || fail "It ended with $status."
    [ ! -s "$folder/said" ] || fail "It said: $(cat "$folder/said")"
    grep -q "The bridge can't be reached" "$folder/complaint" || fail "It complained: $(cat "$folder/complaint")"
    exit
fi

"${agent[@]}" <<<"$told" >"$folder/said"
diff -u - "$folder/said" <<EXPECTED
Brindlefox Apple Bridge is up.
Calendars: Calendar, Home, Holidays, Meetings, Rooms
Created a reminder in Errands.
Contacts: $contacts
Not deleted: Explicit confirmation is required for reminders.delete.
Asked: Delete the reminder? Answered: yes.
Left of it: 0.
EXPECTED
kill -TERM $server
wait $server
server=
