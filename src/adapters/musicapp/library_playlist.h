#pragma once

#include "adapters/musicapp/language.h"
#include "adapters/musicapp/library_index.h"

namespace bridge::musicapp {

// Everything that there is, as a playlist.
class LibraryPlaylist : public Object {
public:
    explicit LibraryPlaylist(std::shared_ptr<LibraryIndex> index) : m_index(std::move(index)) {}

    // The tracks that "search" finds.
    Value search(const Command& command) const;

    std::string className() const override { return "library playlist"; }
    std::string description() const override { return "library playlist \"Library\""; }
    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    ObjectPointer elementAt(const std::string& className, size_t position, ScriptCall& call) override;
    size_t count(const std::string& className, ScriptCall& call) override;
    std::optional<std::vector<ObjectPointer>> elementsWhere(const std::string& className, const std::string& property,
                                                            const Value& value, ScriptCall& call) override;
    bool isSameAs(const Object& other) const override { return other.className() == className(); }

private:
    ObjectPointer track(const MusicItem& item) const;
    const std::vector<MusicItem>& items(const std::string& className) const;

    std::shared_ptr<LibraryIndex> m_index;
};

} // namespace bridge::musicapp
