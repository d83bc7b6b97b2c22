"""A keyring that lets everybody in and then answers nothing, for tests; with an argument it lets nobody in.

It says "ready" when it is on the session bus, and "asked" for each question that it leaves without an answer.
"""

import sys

from gi.repository import Gio, GLib

NAME = "org.freedesktop.secrets"
COLLECTION = "/org/freedesktop/secrets/collection/login"
SERVICE, LOGIN = Gio.DBusNodeInfo.new_for_xml("""
<node>
  <interface name="org.freedesktop.Secret.Service">
    <method name="OpenSession">
      <arg name="algorithm" type="s" direction="in"/>
      <arg name="input" type="v" direction="in"/>
      <arg name="output" type="v" direction="out"/>
      <arg name="result" type="o" direction="out"/>
    </method>
    <method name="SearchItems">
      <arg name="attributes" type="a{ss}" direction="in"/>
      <arg name="unlocked" type="ao" direction="out"/>
      <arg name="locked" type="ao" direction="out"/>
    </method>
    <method name="ReadAlias">
      <arg name="name" type="s" direction="in"/>
      <arg name="collection" type="o" direction="out"/>
    </method>
    <property name="Collections" type="ao" access="read"/>
  </interface>
  <interface name="org.freedesktop.Secret.Collection">
    <property name="Items" type="ao" access="read"/>
    <property name="Label" type="s" access="read"/>
    <property name="Locked" type="b" access="read"/>
    <property name="Created" type="t" access="read"/>
    <property name="Modified" type="t" access="read"/>
  </interface>
</node>
""").interfaces
VALUES = {
    "Collections": GLib.Variant("ao", [COLLECTION]),
    "Items": GLib.Variant("ao", []),
    "Label": GLib.Variant("s", "Login"),
    "Locked": GLib.Variant("b", False),
    "Created": GLib.Variant("t", 0),
    "Modified": GLib.Variant("t", 0),
}


def called(_connection, _sender, _path, _interface, method, arguments, invocation):
    if method == "ReadAlias" and len(sys.argv) == 1:
        invocation.return_value(GLib.Variant("(o)", (COLLECTION,)))
    elif method != "OpenSession" or len(sys.argv) > 1:
        print("asked", flush=True)
    elif arguments[0] == "plain":
        invocation.return_value(GLib.Variant("(vo)", (GLib.Variant("s", ""), "/org/freedesktop/secrets/session/1")))
    else:
        invocation.return_dbus_error("org.freedesktop.DBus.Error.NotSupported", "Only plain.")


def read(_connection, _sender, _path, _interface, name):
    return VALUES[name]


bus = Gio.bus_get_sync(Gio.BusType.SESSION)
bus.register_object("/org/freedesktop/secrets", SERVICE, called, read, None)
bus.register_object(COLLECTION, LOGIN, None, read, None)
Gio.bus_own_name_on_connection(bus, NAME, Gio.BusNameOwnerFlags.NONE, lambda *_: print("ready", flush=True), None)
GLib.MainLoop().run()
