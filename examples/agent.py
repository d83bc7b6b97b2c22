#!/usr/bin/env python3
"""A small agent, with nothing but the standard library.

Reads the line that `./try --serve` prints, where an agent would have the credential from pairing:

    ./try --serve >bridge.json &
    examples/agent.py <bridge.json
"""

import json
import sys
import urllib.error
import urllib.request
from datetime import datetime, timedelta, timezone


class Refused(Exception):
    """The bridge's answer when it did not do it. Decide by `code`; the message is for people."""

    def __init__(self, error):
        super().__init__(error.get("message", error["code"]))
        self.code = error["code"]


# Nothing for this computer goes through a proxy: it would get the credential.
DIRECT = urllib.request.build_opener(urllib.request.ProxyHandler({}))


class Bridge:
    def __init__(self, address, credential):
        self.base = f"http://{address}"
        self.headers = {"Authorization": f"Bearer {credential}", "Content-Type": "application/json"}

    def _send(self, path, body=None):
        request = urllib.request.Request(self.base + path, body, self.headers)
        try:
            # Longer than the bridge lets any application take.
            with DIRECT.open(request, timeout=60) as response:
                return json.load(response)["result"]
        except urllib.error.HTTPError as refusal:
            raise Refused(json.load(refusal)["error"]) from None

    def health(self):
        return self._send("/health")

    def execute(self, operation, payload=None, confirmed=False):
        envelope = {"operation": operation, "payload": payload, "confirmed": confirmed}
        return self._send("/v1/execute", json.dumps(envelope).encode())


def user_agrees(question):
    """A real agent asks the user here, and nobody else."""
    print(f"Asked: {question} Answered: yes.")
    return True


def main():
    told = json.loads(sys.stdin.readline())
    bridge = Bridge(told["address"], told["credential"])

    print(f"{bridge.health()['name']} is up.")

    calendars = bridge.execute("calendar.list")
    print("Calendars:", ", ".join(calendar["title"] for calendar in calendars))

    due = (datetime.now(timezone.utc) + timedelta(days=1)).strftime("%Y-%m-%dT%H:%M:00Z")
    reminder = bridge.execute("reminders.create", {"title": "Water the plants", "dueDate": due, "priority": 0})
    print(f"Created a reminder in {reminder['listTitle']}.")

    # A refusal is not the end: say what the user can do, and go on with what is allowed.
    try:
        found = bridge.execute("contacts.search", {"query": "", "limit": 500})
        print(f"Contacts: {'some' if found else 'none'}.")
    except Refused as refusal:
        if refusal.code != "capability_denied":
            raise
        print(f"Contacts: {refusal}; the user can switch it on in the dashboard.")

    try:
        bridge.execute("reminders.delete", {"identifier": reminder["id"]})
    except Refused as refusal:
        if refusal.code != "confirmation_required":
            raise
        print(f"Not deleted: {refusal}")
        if user_agrees("Delete the reminder?"):
            bridge.execute("reminders.delete", {"identifier": reminder["id"]}, confirmed=True)

    left = bridge.execute("reminders.search", {"listIDs": [], "query": "Water the plants"})
    print(f"Left of it: {len(left)}.")


if __name__ == "__main__":
    try:
        main()
    except Refused as refusal:
        sys.exit(f"The bridge refused ({refusal.code}): {refusal}")
    except urllib.error.URLError as problem:
        sys.exit(f"The bridge can't be reached: {problem.reason}")
