#pragma once

namespace bridge::office {

// Whether the bytes begin as documents do, that is, are worth LibreOffice's attention: it takes whatever it does not
// recognise for text. Reads from the file's start and leaves it there.
bool looksLikeDocument(int file);

} // namespace bridge::office
