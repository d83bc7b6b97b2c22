#include "adapters/vcard/labels.h"

#include "base/text.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <map>
#include <set>

namespace bridge::vcard {

namespace {

struct KnownLabel {
    std::string_view label;
    std::vector<std::string> types; // all of which it has
    bool isOfPhone = true;
};

// The first that fits, so the more particular come first.
const std::vector<KnownLabel>& knownLabels() {
    static const std::vector<KnownLabel> known{
        {"home fax", {"home", "fax"}},
        {"work fax", {"work", "fax"}},
        {"fax", {"fax"}},
        {"pager", {"pager"}},
        {"mobile", {"cell"}},
        {"main", {"main"}},
        {"car", {"car"}},
        {"home", {"home"}, false},
        {"work", {"work"}, false},
    };
    return known;
}

bool isPhone(std::string_view property) {
    return equalsIgnoringCase(property, "TEL");
}

const KnownLabel* knownLabel(std::string_view label, std::string_view property) {
    for (const auto& known : knownLabels())
        if (known.label == label && (isPhone(property) || !known.isOfPhone)) return &known;
    return nullptr;
}

// The standard labels of address books that know no types: _$!<Mobile>!$_
std::string plainLabel(std::string_view label) {
    if (!label.starts_with("_$!<") || !label.ends_with(">!$_") || label.size() < 8) return std::string(label);
    return lowercase(label.substr(4, label.size() - 8));
}

// Built once for a card, so that a card with a great many lines takes its time once.
class Labels {
public:
    explicit Labels(const std::vector<ContentLine>& lines) {
        for (const auto& line : lines)
            if (line.is("X-ABLabel") && !line.group.empty())
                m_ofGroup.emplace(lowercase(line.group), plainLabel(unescaped(line.value)));
    }

    std::string of(const ContentLine& line) const {
        if (!line.group.empty())
            if (const auto found = m_ofGroup.find(lowercase(line.group)); found != m_ofGroup.end())
                return found->second;
        for (const auto& known : knownLabels())
            if ((isPhone(line.name) || !known.isOfPhone) &&
                std::all_of(known.types.begin(), known.types.end(), [&](auto& type) { return line.hasType(type); }))
                return std::string(known.label);
        return {};
    }

private:
    std::map<std::string, std::string> m_ofGroup;
};

std::string percentDecoded(std::string_view text) {
    const auto digit = [&](size_t index) {
        const char byte = index < text.size() ? text[index] : ' ';
        return byte >= '0' && byte <= '9'   ? byte - '0'
               : byte >= 'A' && byte <= 'F' ? byte - 'A' + 10
               : byte >= 'a' && byte <= 'f' ? byte - 'a' + 10
                                            : -1;
    };
    std::string bytes;
    for (size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '%' && digit(index + 1) >= 0 && digit(index + 2) >= 0) {
            bytes += static_cast<char>(digit(index + 1) * 16 + digit(index + 2));
            index += 2;
        } else {
            bytes += text[index];
        }
    }
    return repairUTF8(bytes);
}

std::string valueOf(const ContentLine& line) {
    if (!equalsIgnoringCase(line.parameterValue("VALUE"), "uri")) return unescaped(line.value);
    std::string_view uri = line.value;
    for (const std::string_view scheme : {"tel:", "mailto:"})
        if (equalsIgnoringCase(uri.substr(0, scheme.size()), scheme)) return percentDecoded(uri.substr(scheme.size()));
    return std::string(uri);
}

class Relabeling {
public:
    Relabeling(std::vector<ContentLine>& lines, std::string_view property) : m_lines(lines), m_property(property) {}

    void run(const std::vector<LabeledValue>& wanted) {
        take();
        std::vector<std::optional<ContentLine>> made(wanted.size());
        // Those that stay as they are first, so that none of them is bent into another.
        for (size_t index = 0; index < wanted.size(); ++index)
            made[index] = takeSame(wanted[index]);
        std::vector<ContentLine> lines;
        for (size_t index = 0; index < wanted.size(); ++index)
            lines.push_back(made[index] ? std::move(*made[index]) : relabeled(wanted[index]));
        m_lines.insert(m_lines.begin() + m_place, std::make_move_iterator(lines.begin()),
                       std::make_move_iterator(lines.end()));
        m_lines.insert(m_lines.end(), m_labels.begin(), m_labels.end());
        dropOrphans();
    }

private:
    // Lines of one value by their labels, in their order.
    using OldLines = std::map<std::string, std::deque<ContentLine>>;

    void take() {
        const Labels labels(m_lines);
        std::vector<ContentLine> others;
        std::optional<size_t> place;
        for (const auto& line : m_lines) {
            m_groups.insert(lowercase(line.group));
            if (!line.is(m_property)) {
                others.push_back(line);
                continue;
            }
            if (!place) place = others.size();
            m_old[valueOf(line)][labels.of(line)].push_back(line);
        }
        m_place = static_cast<std::ptrdiff_t>(place.value_or(others.size()));
        m_lines = std::move(others);
    }

    static ContentLine takeFirst(OldLines& lines, OldLines::iterator label) {
        auto line = std::move(label->second.front());
        label->second.pop_front();
        if (label->second.empty()) lines.erase(label);
        return line;
    }

    std::optional<ContentLine> takeSame(const LabeledValue& wanted) {
        const auto lines = m_old.find(wanted.value);
        if (lines == m_old.end()) return std::nullopt;
        const auto label = lines->second.find(wanted.label);
        if (label == lines->second.end()) return std::nullopt;
        return takeFirst(lines->second, label);
    }

    ContentLine relabeled(const LabeledValue& wanted) {
        ContentLine line{"", std::string(m_property), {}, escaped(wanted.value)};
        if (const auto old = m_old.find(wanted.value); old != m_old.end() && !old->second.empty())
            line = takeFirst(old->second, old->second.begin());
        line.group.clear();
        line.removeParameter("TYPE");
        if (const auto* known = knownLabel(wanted.label, m_property)) {
            line.setParameter("TYPE", known->types);
        } else if (!wanted.label.empty()) {
            line.group = freeGroup();
            m_labels.push_back({line.group, "X-ABLabel", {}, escaped(wanted.label)});
        }
        return line;
    }

    std::string freeGroup() {
        while (true)
            if (auto group = "item" + std::to_string(++m_lastGroup); m_groups.insert(group).second) return group;
    }

    // Labels of lines that are gone.
    void dropOrphans() {
        std::set<std::string> used;
        for (const auto& line : m_lines)
            if (!line.is("X-ABLabel")) used.insert(lowercase(line.group));
        std::erase_if(m_lines, [&](const ContentLine& line) {
            return line.is("X-ABLabel") && !used.contains(lowercase(line.group));
        });
    }

    std::vector<ContentLine>& m_lines;
    std::string_view m_property;
    std::map<std::string, OldLines> m_old; // by their values
    std::set<std::string> m_groups;
    std::vector<ContentLine> m_labels;
    std::ptrdiff_t m_place = 0;
    int m_lastGroup = 0;
};

} // namespace

std::vector<LabeledValue> labeledValues(const std::vector<ContentLine>& lines, std::string_view property) {
    const Labels labels(lines);
    std::vector<LabeledValue> values;
    for (const auto& line : lines)
        if (line.is(property)) values.push_back({labels.of(line), valueOf(line)});
    return values;
}

void setLabeledValues(std::vector<ContentLine>& lines, std::string_view property,
                      const std::vector<LabeledValue>& wanted) {
    Relabeling(lines, property).run(wanted);
}

} // namespace bridge::vcard
