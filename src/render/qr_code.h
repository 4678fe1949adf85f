#pragma once

#include <QImage>
#include <QString>

namespace qrn::render {

// The text as a QR code of about `pixels` on a side (each module a whole number of pixels), with its quiet
// margin. A null image when the text is empty or too long.
QImage qrCode(const QString& text, int pixels);

}  // namespace qrn::render
