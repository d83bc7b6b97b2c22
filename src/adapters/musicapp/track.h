#pragma once

#include "adapters/musicapp/language.h"

namespace bridge::musicapp {

// A song of the library. It keeps the state of the library that it was found in.
class Track : public Object {
public:
    Track(ContentsPointer library, const MusicItem& item) : m_library(std::move(library)), m_item(item) {}

    uint64_t id() const { return m_item.persistentID; }

    std::string className() const override { return "track"; }
    std::string description() const override;
    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    bool isSameAs(const Object& other) const override;

private:
    ContentsPointer m_library;
    const MusicItem& m_item;
};

} // namespace bridge::musicapp
