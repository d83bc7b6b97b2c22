#include "adapters/vcard/upgrade.h"

#include "adapters/vcard/charset.h"
#include "adapters/vcard/date_value.h"
#include "adapters/vcard/transfer_encoding.h"
#include "base/base64.h"
#include "base/text.h"

#include <algorithm>
#include <initializer_list>
#include <optional>

namespace bridge::vcard {

namespace {

enum class Version { v21, v30, v40 };

Version versionOf(const WrittenCard& card) {
    for (const auto& line : card.lines) {
        if (!line.is("VERSION")) continue;
        const auto text = trim(line.value);
        return text == "2.1" ? Version::v21 : text == "3.0" ? Version::v30 : Version::v40;
    }
    return Version::v30;
}

bool isOneOf(const ContentLine& line, std::initializer_list<std::string_view> names) {
    return std::any_of(names.begin(), names.end(), [&](auto name) { return line.is(name); });
}

bool isExtension(const ContentLine& line) {
    return equalsIgnoringCase(std::string_view(line.name).substr(0, 2), "X-");
}

// vCard 2.1 knows no line break in a value and no backslash but before a separator.
std::string unescaped21(std::string_view piece) {
    std::string text;
    for (size_t index = 0; index < piece.size(); ++index) {
        const bool guards = piece[index] == '\\' && piece.size() - index > 1 &&
                            std::string_view(";,:\\").find(piece[index + 1]) != std::string_view::npos;
        if (guards) ++index;
        text += piece[index];
    }
    return text;
}

// A value can't break out of its line, nor guard what is written behind it.
std::string onOneLine(std::string_view value) {
    std::string line;
    for (size_t index = 0; index < value.size(); ++index) {
        if (value[index] == '\n')
            line += "\\n";
        else if (value[index] != '\r')
            line += value[index];
        else if (!value.substr(index + 1).starts_with('\n'))
            line += "\\n";
    }
    size_t guards = 0;
    while (guards < line.size() && line[line.size() - 1 - guards] == '\\')
        ++guards;
    return line.append(guards % 2, '\\');
}

class Upgrade {
public:
    Upgrade(Version version, std::vector<std::string>& faults) : m_version(version), m_faults(faults) {}

    void add(ContentLine line) {
        if (isOneOf(line, {"VERSION", "BEGIN", "END", "PROFILE"})) return;
        nameParameters(line);
        decode(line);
        if (m_version != Version::v40) modernize(line);
        line.value = onOneLine(line.value);
        const bool isEmpty = line.value.find_first_not_of(" ;,") == line.value.npos;
        if (m_version == Version::v40 || !isEmpty || isExtension(line)) m_lines.push_back(std::move(line));
    }

    std::vector<ContentLine> finish() {
        placeLabels();
        return std::move(m_lines);
    }

private:
    void fault(std::string sentence) {
        if (std::find(m_faults.begin(), m_faults.end(), sentence) == m_faults.end())
            m_faults.push_back(std::move(sentence));
    }

    // TEL;WORK;QUOTED-PRINTABLE says TYPE=WORK and ENCODING=QUOTED-PRINTABLE; TYPE="work,voice" names two types.
    static void nameParameters(ContentLine& line) {
        std::vector<ContentParameter> named;
        std::optional<size_t> types; // where they stand
        for (const auto& parameter : line.parameters) {
            const auto& name = parameter.name;
            const auto& values = parameter.values;
            const auto isWord = [&](std::initializer_list<std::string_view> words) {
                return name.empty() && std::any_of(words.begin(), words.end(),
                                                   [&](auto word) { return equalsIgnoringCase(values[0], word); });
            };
            if (isWord({"QUOTED-PRINTABLE", "BASE64", "B", "7BIT", "8BIT"})) {
                named.push_back({"ENCODING", values});
            } else if (isWord({"URL", "URI", "INLINE", "CID", "CONTENT-ID"})) {
                named.push_back({"VALUE", values});
            } else if (!name.empty() && !equalsIgnoringCase(name, "TYPE")) {
                named.push_back({name, values});
            } else {
                if (!types) types = named.size();
                if (*types == named.size()) named.push_back({"TYPE", {}});
                for (const auto& value : values)
                    for (const auto& type : split(value, ','))
                        if (!trim(type).empty()) named[*types].values.emplace_back(trim(type));
            }
        }
        std::erase_if(named, [](const auto& each) { return each.values.empty(); });
        line.parameters = std::move(named);
    }

    std::string inUTF8(const ContentLine& line, std::string bytes) {
        const auto charset = line.parameterValue("CHARSET");
        if (!charset.empty()) {
            if (auto text = decodeCharset(bytes, charset)) return *text;
            fault("Its character set “" + std::string(charset) + "” is not known.");
        }
        if (isUTF8(bytes)) return bytes;
        // What programs that forget to say it write.
        fault("It is not in UTF-8 and was read as Windows-1252.");
        return decodeCharset(bytes, "windows-1252").value_or(repairUTF8(bytes));
    }

    // From here on the value is in UTF-8, without a transfer encoding, and has the escapes of version 3.0 and 4.0.
    void decode(ContentLine& line) {
        const auto encoding = lowercase(line.parameterValue("ENCODING"));
        if (encoding == "b" || encoding == "base64") return decodeBinary(line);
        const bool isQuoted = encoding == "quoted-printable";
        const bool isOld = m_version == Version::v21 && !isExtension(line) && !line.is("AGENT");
        if (isOld || isQuoted) {
            // Charsets such as Shift JIS have bytes that look like separators, so they are decoded first, unless the
            // bytes are quoted: then the separators are the ones that are not.
            auto pieces = isQuoted ? split(line.value, ';') : split(inUTF8(line, line.value), ';');
            for (auto& piece : pieces) {
                if (isQuoted) piece = inUTF8(line, decodeQuotedPrintable(piece));
                if (isOld) piece = escaped(unescaped21(piece));
            }
            line.value = joined(pieces, ";");
        } else {
            line.value = inUTF8(line, line.value);
        }
        line.removeParameter("CHARSET");
        line.removeParameter("ENCODING");
    }

    void decodeBinary(ContentLine& line) {
        const auto tidied = tidiedBase64(line.value);
        if (tidied && !tidied->isWhole) fault("The value of its " + line.name + " has no end; what is there was kept.");
        if (!tidied) {
            fault("The value of its " + line.name + " is not base64 and was left out.");
            line.value.clear();
        } else if (tidied->text.empty()) {
            line.value.clear();
        } else if (isOneOf(line, {"PHOTO", "LOGO", "SOUND", "KEY"})) {
            makeDataURI(line, tidied->text);
        } else if (isExtension(line)) {
            line.value = tidied->text;
            return;
        } else {
            line.value = escaped(inUTF8(line, decodeBase64(tidied->text).value_or("")));
        }
        line.removeParameter("CHARSET");
        line.removeParameter("ENCODING");
    }

    static void makeDataURI(ContentLine& line, const std::string& base64) {
        const auto* types = line.parameter("TYPE");
        auto media = types && !types->values.empty() ? lowercase(types->values.back()) : std::string();
        // 48 characters are a whole number of groups of base64, and more bytes than a signature needs.
        const auto start = decodeBase64(std::string_view(base64).substr(0, 48));
        if (const auto seen = mediaTypeOf(start.value_or("")); !seen.empty())
            media = seen;
        else if (media == "x509")
            media = "application/pkix-cert";
        else if (media == "pgp")
            media = "application/pgp-keys";
        else if (media.empty() || line.is("KEY"))
            media = "application/octet-stream";
        else if (media.find('/') == media.npos)
            media = (line.is("SOUND") ? "audio/" : "image/") + media;
        line.removeParameter("TYPE");
        line.removeParameter("VALUE");
        line.value = "data:" + media + ";base64," + base64;
    }

    void modernize(ContentLine& line) {
        modernizeTypes(line);
        if (isExtension(line)) return;
        const auto kind = lowercase(line.parameterValue("VALUE"));
        if (kind == "url") line.setParameter("VALUE", {"uri"});
        const bool isURI =
            isOneOf(line, {"URL", "SOURCE", "FBURL", "CALURI", "CALADRURI", "IMPP", "PHOTO", "LOGO", "SOUND", "KEY"});
        if (line.is("AGENT"))
            modernizeAgent(line);
        else if (isURI || kind == "uri" || kind == "url")
            line.value = std::string(trim(unescaped(line.value)));
        else if (line.is("CATEGORIES"))
            line.value = m_version == Version::v21 ? listOf(line.value) : line.value;
        else if (line.is("GEO"))
            line.value = "geo:" + joined(split(unescaped(line.value), ';'), ",");
        else if (line.is("REV"))
            line.value = basicForm(line.value);
        else if (isOneOf(line, {"BDAY", "ANNIVERSARY"}))
            modernizeDay(line);
        else if (!isOneOf(line, {"N", "ADR", "ORG", "NICKNAME"}))
            line.value = escaped(unescaped(line.value));
        if (isOneOf(line, {"PHOTO", "LOGO"}) && line.value.find(':') == line.value.npos)
            if (const auto tidied = tidiedBase64(line.value); tidied && !tidied->text.empty())
                makeDataURI(line, tidied->text);
    }

    static void modernizeTypes(ContentLine& line) {
        const auto* parameter = line.parameter("TYPE");
        if (!parameter) return;
        std::vector<std::string> types;
        bool isPreferred = false;
        for (const auto& value : parameter->values) {
            auto type = lowercase(value);
            if (type == "pref")
                isPreferred = true;
            else if (type != "internet" && std::find(types.begin(), types.end(), type) == types.end())
                types.push_back(std::move(type));
        }
        line.setParameter("TYPE", std::move(types));
        if (isPreferred) line.setParameter("PREF", {"1"});
    }

    // The separators of vCard 2.1 are anybody's guess.
    static std::string listOf(std::string_view value) {
        std::vector<std::string> items;
        for (const auto& piece : split(value, ';'))
            for (const auto& item : split(unescaped(piece), ','))
                items.push_back(escaped(trim(item)));
        return joined(items, ",");
    }

    static void modernizeDay(ContentLine& line) {
        const auto text = unescaped(line.value);
        line.value = text;
        const auto day = dayOf(line);
        if (day && text.find('T') == text.npos) {
            line.value = dayValue(*day);
            line.parameters.clear();
        } else if (day) {
            line.value = basicForm(trim(text));
        } else {
            line.value = escaped(text);
            line.setParameter("VALUE", {"text"});
        }
    }

    void modernizeAgent(ContentLine& line) {
        const auto text = unescaped(line.value);
        line.name = "RELATED";
        line.setParameter("TYPE", {"agent"});
        if (line.parameter("VALUE")) {
            line.value = text;
            return;
        }
        line.setParameter("VALUE", {"text"});
        line.value = escaped(isUTF8(text) ? text : inUTF8({}, text));
    }

    // LABEL is the written form of the address with the same types; one that has no address is one.
    void placeLabels() {
        if (m_version == Version::v40) return;
        std::vector<ContentLine> kept;
        std::vector<ContentLine> labels;
        for (auto& line : m_lines)
            (line.is("LABEL") ? labels : kept).push_back(std::move(line));
        m_lines = std::move(kept);
        for (auto& label : labels) {
            const auto fits = [&](const ContentLine& line) {
                const auto* types = line.parameter("TYPE");
                const auto* wanted = label.parameter("TYPE");
                return line.is("ADR") && !line.parameter("LABEL") && !types == !wanted && (!types || *types == *wanted);
            };
            auto place = std::find_if(m_lines.begin(), m_lines.end(), fits);
            const auto text = unescaped(label.value);
            if (place == m_lines.end()) {
                label.name = "ADR";
                label.value = ";;;;;;";
                place = m_lines.insert(m_lines.end(), std::move(label));
            }
            place->setParameter("LABEL", {text});
        }
    }

    Version m_version;
    std::vector<std::string>& m_faults;
    std::vector<ContentLine> m_lines;
};

} // namespace

std::vector<ContentLine> upgraded(const WrittenCard& card, std::vector<std::string>& faults) {
    Upgrade upgrade(versionOf(card), faults);
    for (const auto& line : card.lines)
        upgrade.add(line);
    for (const int number : card.badLines)
        faults.push_back("Line " + std::to_string(number) + " of the file is not vCard and was left out.");
    return upgrade.finish();
}

} // namespace bridge::vcard
