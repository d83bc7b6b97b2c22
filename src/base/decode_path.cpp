#include "base/decode_path.h"

namespace bridge {

void DecodePath::fail(std::string_view problem) const {
    std::string message;
    write(message);
    if (!message.empty()) message += ": ";
    throw DecodingError(message.append(problem));
}

void DecodePath::write(std::string& text) const {
    if (!m_parent) return;
    m_parent->write(text);
    if (m_key.data())
        text.append(".").append(m_key);
    else
        text.append("[").append(std::to_string(m_index)).append("]");
}

} // namespace bridge
