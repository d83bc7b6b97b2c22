"""What a screen reader does, for tests: accessible.py ACTION ROLE NAME

The actions look for what has that role and name, in the application brindlefox-apple-bridge, until there is
no hope any more. "press" does what it offers first; "focus" gives it the keyboard; "state" prints "checked" or
"unchecked"; "describe" prints its description; "tree" prints everything there is (it takes no role and no name).
"""

import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

APPLICATION = "brindlefox-apple-bridge"
PATIENCE = 180
MOMENT = 50


def children(item):
    for index in range(item.get_child_count()):
        child = item.get_child_at_index(index)
        if child is not None:
            yield child


def walk(item):
    yield item
    for child in children(item):
        yield from walk(child)


def application():
    for candidate in children(Atspi.get_desktop(0)):
        if candidate.get_name() == APPLICATION:
            return candidate
    return None


def find(role, name):
    found = application()
    if found is None:
        return None
    for item in walk(found):
        if item.get_role_name() == role and item.get_name() == name:
            return item
    return None


def let_something_happen():
    """Until something comes from the bus, or for a moment in which others have the processor."""
    timer = GLib.timeout_source_new(MOMENT)
    timer.set_callback(lambda _data: GLib.SOURCE_REMOVE)
    timer.attach(None)
    GLib.MainContext.default().iteration(True)
    timer.destroy()


def wait_for(role, name):
    deadline = time.monotonic() + PATIENCE
    while time.monotonic() < deadline:
        try:
            Atspi.Accessible.clear_cache(Atspi.get_desktop(0))
            item = find(role, name)
            if item is not None:
                return item
        except GLib.Error:
            pass  # it changed while we looked
        let_something_happen()
    sys.exit(f"there is no {role} {name!r}")


def tree():
    for item in walk(application()):
        states = [state.value_nick for state in item.get_state_set().get_states()]
        print(item.get_role_name(), repr(item.get_name()), " ".join(sorted(states)), sep=" | ")


def main(action, role="", name=""):
    if action == "tree":
        return tree()
    item = wait_for(role, name)
    if action == "press":
        if not item.do_action(0):
            sys.exit(f"{name!r} does nothing")
    elif action == "focus":
        item.grab_focus()
    elif action == "describe":
        print(item.get_description())
    elif action == "state":
        print("checked" if item.get_state_set().contains(Atspi.StateType.CHECKED) else "unchecked")
    print("done")


main(*sys.argv[1:])
