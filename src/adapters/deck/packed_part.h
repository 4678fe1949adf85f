// A part of the deck as it goes into the zip file.
#pragma once

#include <zip.h>

#include <string>
#include <string_view>

namespace qrn::deck {

// A source for libzip that holds `text` packed, so that libzip only copies it; unpacked where packing gains
// nothing or too much. Its statistics tell the method. The text must stay until the zip file is closed. Null
// when libzip has no memory.
zip_source_t* packedPart(zip_t* zip, std::string_view text);

}  // namespace qrn::deck
