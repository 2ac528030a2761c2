#include "toolkit/pngcheck.h"

#include <QtEndian>

#include <array>

namespace skinwidgets
{

namespace
{

constexpr char signature[] = "\x89PNG\r\n\x1a\n";
constexpr qsizetype signatureSize = sizeof(signature) - 1;
// Length before and checksum after what the checksum covers: the type and the data.
constexpr qsizetype lengthSize = 4;
constexpr qsizetype typeSize = 4;
constexpr qsizetype checksumSize = 4;

std::array<quint32, 256> checksumTable()
{
    std::array<quint32, 256> table{};
    for (quint32 byte = 0; byte < table.size(); ++byte) {
        quint32 value = byte;
        for (int bit = 0; bit < 8; ++bit)
            value = value & 1 ? (value >> 1) ^ 0xedb88320U : value >> 1;
        table[byte] = value;
    }
    return table;
}

quint32 checksum(const char* bytes, qsizetype count)
{
    static const std::array<quint32, 256> table = checksumTable();
    quint32 value = ~0U;
    for (qsizetype i = 0; i < count; ++i)
        value = table[(value ^ static_cast<uchar>(bytes[i])) & 0xff] ^ (value >> 8);
    return ~value;
}

} // namespace

bool isPng(const QByteArray& data)
{
    return data.startsWith(QByteArray::fromRawData(signature, signatureSize));
}

bool isWholePng(const QByteArray& data)
{
    qsizetype at = signatureSize;
    while (data.size() - at >= lengthSize + typeSize + checksumSize) {
        const auto length = qsizetype(qFromBigEndian<quint32>(data.constData() + at));
        const char* type = data.constData() + at + lengthSize;
        if (length > data.size() - at - lengthSize - typeSize - checksumSize)
            return false;
        if (checksum(type, typeSize + length) != qFromBigEndian<quint32>(type + typeSize + length))
            return false;
        if (qstrncmp(type, "IEND", typeSize) == 0)
            return true;
        at += lengthSize + typeSize + length + checksumSize;
    }
    return false;
}

} // namespace skinwidgets
