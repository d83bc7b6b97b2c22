#pragma once

#include "adapters/applescript/dictionary.h"

namespace bridge::applescript {

// Words of applications as scripts find them, as many as the tests need.
inline Dictionary officeVocabulary() {
    return {
        .classes = {{"document", "documents", {"body text", "active sheet", "document template"}, {"sheet", "slide"}},
                    {"template", "templates", {"name"}, {}},
                    {"sheet", "sheets", {"name"}, {"table"}},
                    {"table", "tables", {"name", "row count", "column count"}, {"cell", "range"}},
                    {"range", "ranges", {"name"}, {"cell"}},
                    {"cell", "cells", {"name", "value"}, {}},
                    {"slide", "slides", {"default title item", "default body item"}, {}},
                    {"text item", "text items", {"object text"}, {}}},
        .commands = {{"export", {"to", "as"}}},
        .constants = {"pdf", "microsoft word", "microsoft excel", "csv", "quicktime movie", "unformatted text"}};
}

inline Dictionary musicVocabulary() {
    return {.classes = {{"playlist", "playlists", {"name", "description", "persistent id"}, {"track"}},
                        {"library playlist", "library playlists", {}, {}, "playlist"},
                        {"user playlist", "user playlists", {}, {}, "playlist"},
                        {"track", "tracks", {"name", "artist", "album", "duration", "persistent id"}, {}}},
            .commands = {{"search", {"for", "only"}}, {"play", {"once"}}, {"pause", {}}},
            .constants = {"songs", "artists", "albums"}};
}

// A shop with shelves of goods, for whatever else there is in the language.
inline Dictionary shopVocabulary() {
    return {.classes = {{"application", "applications", {"end date", "favourite shelf"}, {"shelf", "customer"}},
                        {"shelf", "shelves", {"name", "id", "colour"}, {"good"}},
                        {"good", "goods", {"name", "price", "id", "shelf mark"}, {}},
                        {"customer", "customers", {"name"}, {}}},
            .commands = {{"sell", {"to", "for", "gift wrap", "by post"}}, {"wait", {}}, {"fail", {}}},
            .constants = {"red", "dark red", "cash"}};
}

} // namespace bridge::applescript
