#include "adapters/libreoffice/helper/quicktime_file.h"

#include "adapters/libreoffice/protocol.h"

extern "C" {
#include <libavformat/avformat.h>
}

namespace bridge::office {

namespace {

constexpr int ticksPerSecond = 600;

void check(int code) {
    if (code < 0) throw ScriptError(failed, "The movie could not be written.");
}

} // namespace

QuickTimeFile::QuickTimeFile(const std::string& path, FrameSize size) {
    AVFormatContext* context = nullptr;
    check(avformat_alloc_output_context2(&context, nullptr, "mov", path.c_str()));
    m_context.reset(context);
    AVStream* stream = avformat_new_stream(context, nullptr);
    if (!stream) check(-1);
    stream->time_base = {1, ticksPerSecond};
    auto& pictures = *stream->codecpar;
    pictures.codec_type = AVMEDIA_TYPE_VIDEO;
    pictures.codec_id = AV_CODEC_ID_MJPEG;
    pictures.codec_tag = MKTAG('j', 'p', 'e', 'g');
    pictures.width = size.width;
    pictures.height = size.height;
    check(avio_open(&context->pb, path.c_str(), AVIO_FLAG_WRITE));
    check(avformat_write_header(context, nullptr));
}

void QuickTimeFile::Closer::operator()(AVFormatContext* context) const {
    avio_closep(&context->pb);
    avformat_free_context(context);
}

void QuickTimeFile::add(const std::string& picture, int seconds) {
    AVPacket* packet = av_packet_alloc();
    if (!packet || av_new_packet(packet, static_cast<int>(picture.size())) < 0) {
        av_packet_free(&packet);
        check(-1);
    }
    std::copy(picture.begin(), picture.end(), packet->data);
    // The stream may have been given another clock than it was asked for.
    const auto second = [this](int64_t count) { return av_rescale_q(count, {1, 1}, m_context->streams[0]->time_base); };
    packet->pts = packet->dts = second(m_end);
    packet->duration = second(seconds);
    packet->flags = AV_PKT_FLAG_KEY;
    m_end += seconds;
    const int code = av_interleaved_write_frame(m_context.get(), packet);
    av_packet_free(&packet);
    check(code);
}

void QuickTimeFile::finish() {
    check(av_write_trailer(m_context.get()));
    check(avio_closep(&m_context->pb));
}

} // namespace bridge::office
