#include "SsidText.h"

namespace {

bool isContinuation(uchar byte)
{
    return (byte & 0xC0) == 0x80;
}

// The length of the valid UTF-8 sequence at `at`, or 0. Overlong forms, surrogates and code
// points above U+10FFFF are not valid.
qsizetype sequenceLength(const QByteArray& bytes, qsizetype at)
{
    const auto byte = [&bytes](qsizetype i) { return uchar(bytes.at(i)); };
    const uchar lead = byte(at);
    if (lead < 0x80)
        return 1;
    qsizetype length = 0;
    uchar low = 0x80;
    uchar high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        if (lead == 0xE0)
            low = 0xA0;
        else if (lead == 0xED)
            high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        if (lead == 0xF0)
            low = 0x90;
        else if (lead == 0xF4)
            high = 0x8F;
    } else {
        return 0;
    }
    if (at + length > bytes.size())
        return 0;
    const uchar second = byte(at + 1);
    if (second < low || second > high)
        return 0;
    for (qsizetype i = at + 2; i < at + length; ++i) {
        if (!isContinuation(byte(i)))
            return 0;
    }
    return length;
}

} // namespace

namespace SsidText {

QString fromBytes(const QByteArray& bytes)
{
    QString text;
    qsizetype runStart = 0;
    qsizetype at = 0;
    while (at < bytes.size()) {
        const qsizetype length = sequenceLength(bytes, at);
        if (length > 0) {
            at += length;
            continue;
        }
        text += QString::fromUtf8(bytes.constData() + runStart, at - runStart);
        text += QStringLiteral("\\x%1").arg(QString::number(uchar(bytes.at(at)), 16).toUpper(), 2,
                                            QLatin1Char('0'));
        runStart = ++at;
    }
    text += QString::fromUtf8(bytes.constData() + runStart, at - runStart);
    return text;
}

} // namespace SsidText
