pragma Singleton
import QtQuick

// Every word of the dashboard that is not the catalogue's or the user's own.
QtObject {
    readonly property string product: "Brindlefox Apple Bridge"
    readonly property string purpose: "Choose exactly what the agent can read or change"
    readonly property string paired: "Paired"
    readonly property string unpaired: "Not paired"

    readonly property string agentPermissions: "Agent permissions"
    function capabilitiesEnabled(enabled, total) { return enabled + " of " + total + " capabilities enabled" }
    readonly property string grantAccess: "Grant access"
    readonly property string openSettings: "Open Settings"
    readonly property string allowedActions: "Allowed actions"
    readonly property string enableAll: "Enable all"
    readonly property string disableAll: "Disable all"

    readonly property string authorizedCalendars: "Authorized calendars"
    readonly property string authorizedLists: "Authorized reminder lists"
    readonly property string selectAll: "Select all"
    readonly property string selectNone: "Select none"
    readonly property string calendarsNote: "Capabilities above apply only to the calendars selected here."
    readonly property string listsNote: "Capabilities above apply only to the lists selected here."
    function noneAvailable(kind) { return "No " + kind + "s are currently available." }

    readonly property string authorizedFolders: "Authorized folders"
    readonly property string foldersNote: "All file and iWork actions stay inside these folders."
    readonly property string noFolders: "No folders are authorized yet."
    readonly property string readOnly: "Read only"
    readonly property string remove: "Remove"
    readonly property string addFolder: "Add Folder…"

    readonly property string launchAtLogin: "Launch at Login"
    readonly property string startAutomatically: "Start Apple Bridge automatically when you sign in"
    readonly property string startsAutomatically: "Starts automatically when you sign in"
    readonly property string approvalRequired: "Approval required in System Settings"
    readonly property string launchUnavailable: "Launch at Login is unavailable"

    readonly property string pairing: "Agent Server pairing"
    readonly property string serverAddress: "Agent Server address"
    readonly property string onlyPaired: "Only the paired Agent Server can access this bridge"
    readonly property string unpair: "Unpair"
    readonly property string unpairedWarning: "Unpaired — every bridge request is blocked"
    readonly property string pairingCode: "One-time pairing code"
    readonly property string codeHint: "Generate the code in Agent Server with: bun run apple-bridge:code"
    readonly property string pair: "Pair"
    readonly property string isPairing: "Pairing…"

    readonly property string refresh: "Refresh"
    readonly property string privacySettings: "Privacy Settings"
    readonly property string quit: "Quit"
    readonly property string tryAgain: "Try again"
    readonly property string notListening: "The bridge can't be reached by the Agent Server"

    readonly property string allow: "Allow"
    readonly property string dontAllow: "Don't Allow"

    // What only a screen reader says.
    readonly property string expanded: "expanded"
    readonly property string collapsed: "collapsed"
    readonly property string busy: "busy"
    readonly property string dimmed: "unavailable"
    function forWhat(action, what) { return action + ": " + what }

    // By the names of the states.
    function permissionState(name) {
        return {
            notDetermined: "Not determined", denied: "Denied", restricted: "Restricted", writeOnly: "Write only",
            limited: "Limited", fullAccess: "Full access", unavailable: "Unavailable", unknown: "Unknown"
        }[name] ?? ""
    }
    // The permission that a group depends on, where it is called otherwise than the group.
    function permissionName(group) { return group === "locationMaps" ? "Location" : "" }

    // By the names of the services.
    function consentTitle(service) {
        return {
            calendar: "Allow access to your calendars?", reminders: "Allow access to your reminders?",
            contacts: "Allow access to your contacts?", music: "Allow access to your music library?",
            location: "Allow access to your location?"
        }[service] ?? ""
    }
    function consentText(service) {
        return {
            calendar: "Brindlefox Apple Bridge could then show the agent your events and change them, in the calendars that you select and as far as you enable it.",
            reminders: "Brindlefox Apple Bridge could then show the agent your reminders and change them, in the lists that you select and as far as you enable it.",
            contacts: "Brindlefox Apple Bridge could then show the agent your contacts and change them, as far as you enable it.",
            music: "Brindlefox Apple Bridge could then show the agent your music, change playlists and control playback, as far as you enable it.",
            location: "Brindlefox Apple Bridge could then tell the agent where this computer is, as far as you enable it."
        }[service] ?? ""
    }
}
