#pragma once

#include <QByteArray>
#include <QString>

// SSIDs are bytes, not text. Valid UTF-8 reads as text; every byte that is not part of a valid
// UTF-8 sequence is written as \xHH (upper-case hex), so names that differ in bytes never read
// alike.
namespace SsidText {

QString fromBytes(const QByteArray& bytes);

} // namespace SsidText
