#include "adapters/musicapp/track.h"

#include "adapters/musicapp/arguments.h"

namespace bridge::musicapp {

std::string Track::description() const {
    return "track \"" + m_item.title + '"';
}

Value Track::property(const std::string& name, ScriptCall&) {
    if (name == "persistent id") return idText(id());
    if (name == "name") return m_item.title;
    if (name == "artist") return m_item.artist;
    if (name == "album") return m_item.album.value_or("");
    if (name == "duration") return static_cast<double>(m_item.totalTime) / 1000.0;
    throw cantGet(name + " of " + description());
}

void Track::setProperty(const std::string& name, const Value&, ScriptCall&) {
    cantSet(name, *this);
}

std::vector<ObjectPointer> Track::elements(const std::string& className, ScriptCall&) {
    throw cantGet("every " + className + " of " + description());
}

bool Track::isSameAs(const Object& other) const {
    const auto* track = dynamic_cast<const Track*>(&other);
    return track && track->id() == id();
}

} // namespace bridge::musicapp
