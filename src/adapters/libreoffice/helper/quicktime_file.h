#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct AVFormatContext;

namespace bridge::office {

struct FrameSize {
    int32_t width = 0;
    int32_t height = 0;
};

// A QuickTime movie whose frames are JPEG pictures. Throws ScriptError.
class QuickTimeFile {
public:
    QuickTimeFile(const std::string& path, FrameSize size);

    void add(const std::string& picture, int seconds);
    // Without this the file is of no use.
    void finish();

private:
    struct Closer {
        void operator()(AVFormatContext* context) const;
    };

    std::unique_ptr<AVFormatContext, Closer> m_context;
    int64_t m_end = 0;
};

} // namespace bridge::office
