#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bridge {

// The words of a name as searching compares them, folded, in their order. A word is a run of letters, digits and their
// marks; scripts that write without spaces are cut so that the beginning of each of their words begins one here too:
// Han and Hiragana into characters, since no dictionary knows where a given name begins.
std::vector<std::string> nameWords(std::string_view text);

// Whether each of the sought words begins one of the name's words. Nothing sought is found nowhere.
bool wordsBeginWordsOf(const std::vector<std::string>& sought, const std::vector<std::string>& name);

// A byte string that orders people and organizations as the user's address book does: by family name, given name and
// organization; who lacks one goes by the next.
std::string nameSortKey(std::string_view familyName, std::string_view givenName, std::string_view organizationName);

// Changes when nameWords() or a sort key may have become another for the same text: with the user's language and with
// ICU. For those who keep them.
std::string nameRules();

} // namespace bridge
