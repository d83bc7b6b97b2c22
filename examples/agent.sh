#!/usr/bin/env bash
# A small agent of curl and jq.
#
# Reads the line that `./try --serve` prints, where an agent would have the credential from pairing:
#
#     ./try --serve >bridge.json &
#     examples/agent.sh <bridge.json
set -euo pipefail

read -r told
address=$(jq -r .address <<<"$told")
# Not on curl's command line, where every program of this computer could read it.
header=$(jq -r '"Authorization: Bearer " + .credential' <<<"$told")

# send PATH [BODY]: puts what the bridge says into $answer. 60 seconds are longer than it lets any application take.
# A proxy would get the credential.
send() {
    answer=$(curl -sS --noproxy '*' --max-time 60 -H @- "http://$address$1" "${@:2}" <<<"$header") || {
        echo "The bridge can't be reached." >&2
        exit 1
    }
}

# execute OPERATION [PAYLOAD] [CONFIRMED]: likewise, a result or an error
execute() {
    local envelope
    envelope=$(jq -cn --arg operation "$1" --argjson payload "${2:-null}" --argjson confirmed "${3:-false}" \
        '{$operation, $payload, $confirmed}')
    send /v1/execute --data-binary "$envelope"
}

# Whether the answer is a refusal with this code. Decide by the code; the message is for people.
refused() { [ "$(jq -r '.error.code // ""' <<<"$answer")" = "$1" ]; }
message() { jq -r .error.message <<<"$answer"; }

# result FILTER: what jq makes of the result. Without one it is over.
result() {
    jq -er ".result | $1" <<<"$answer" || {
        jq -r '"The bridge refused (\(.error.code)): \(.error.message)"' <<<"$answer" >&2
        exit 1
    }
}

# A real agent asks the user here, and nobody else.
user_agrees() { echo "Asked: $1 Answered: yes."; }

send /health
name=$(result .name)
echo "$name is up."

execute calendar.list
titles=$(result 'map(.title) | join(", ")')
echo "Calendars: $titles"

due=$(jq -nr 'now + 24 * 3600 | strftime("%Y-%m-%dT%H:%M:00Z")')
execute reminders.create "{\"title\": \"Water the plants\", \"dueDate\": \"$due\", \"priority\": 0}"
list=$(result .listTitle)
which=$(result '{identifier: .id} | tojson')
echo "Created a reminder in $list."

# A refusal is not the end: say what the user can do, and go on with what is allowed.
execute contacts.search '{"query": "", "limit": 500}'
if refused capability_denied; then
    echo "Contacts: $(message); the user can switch it on in the dashboard."
else
    found=$(result 'if length > 0 then "some" else "none" end')
    echo "Contacts: $found."
fi

execute reminders.delete "$which"
if refused confirmation_required; then
    echo "Not deleted: $(message)"
    if user_agrees "Delete the reminder?"; then
        execute reminders.delete "$which" true
        result .deleted >/dev/null
    fi
fi

execute reminders.search '{"listIDs": [], "query": "Water the plants"}'
left=$(result length)
echo "Left of it: $left."
