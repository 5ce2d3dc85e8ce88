// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QImageWriter>

#include <array>
#include <cstring>

/// Image files for tests, made here so that each says what is in it.
namespace velto::test
{

inline QImage plainImage(QSize size, const QColor &colour)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

inline QByteArray encoded(const QImage &image, const QByteArray &format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(100); // lossless where the format can
    if (!writer.write(image))
        qFatal("No writer for %s", format.constData());
    return bytes;
}

inline QByteArray png(QSize size, const QColor &colour = Qt::red)
{
    return encoded(plainImage(size, colour), "png");
}

inline QByteArray bigEndian(quint32 number)
{
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift);
    return bytes;
}

inline quint32 crc32(const QByteArray &bytes)
{
    quint32 sum = 0xffffffff;
    for (const char byte : bytes) {
        sum ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xedb88320U : 0U);
    }
    return ~sum;
}

inline QByteArray pngChunk(const QByteArray &name, const QByteArray &content)
{
    return bigEndian(static_cast<quint32>(content.size())) + name + content +
           bigEndian(crc32(name + content));
}

/// A black-and-white PNG of any size in next to no bytes. With `isWhole` false its pixels are
/// missing.
inline QByteArray hugePng(quint32 width, quint32 height, bool isWhole)
{
    QByteArray file("\x89PNG\r\n\x1a\n", 8);
    file += pngChunk("IHDR", bigEndian(width) + bigEndian(height) + QByteArray("\1\0\0\0\0", 5));
    const qsizetype rows = isWhole ? qsizetype((width + 7) / 8 + 1) * height : 0;
    file += pngChunk("IDAT", qCompress(QByteArray(rows, '\0'), 9).mid(4));
    return file + pngChunk("IEND", {});
}

/// A GIF of one pixel whose frames show one colour after the other.
inline QByteArray gif(const QList<QColor> &frames)
{
    QByteArray file("GIF89a\x01\0\x01\0\x80\0\0", 13);
    file += QByteArray("\0\0\0\xff\xff\xff", 6); // a table for all, which no frame uses
    for (const QColor &colour : frames) {
        file += QByteArray("\x21\xf9\x04\x04\x0a\0\0\0", 8);
        file += QByteArray("\x2c\0\0\0\0\x01\0\x01\0\x80", 10);
        const std::array table{colour.red(), colour.green(), colour.blue(), 0, 0, 0};
        for (const int channel : table)
            file += static_cast<char>(channel);
        file += QByteArray("\x02\x02\x44\x01\0", 5);
    }
    return file + ';';
}

/// A JPEG that notes how the camera was held: 6 is a quarter turn.
inline QByteArray turnedJpeg(QSize size, char orientation)
{
    const QByteArray file = encoded(plainImage(size, Qt::green), "jpeg");
    QByteArray exif("Exif\0\0MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 25);
    exif += orientation;
    exif += QByteArray("\0\0\0\0\0\0", 6);
    const auto length = static_cast<char>(exif.size() + 2);
    return file.left(2) + QByteArray("\xff\xe1\0", 3) + length + exif + file.mid(2);
}

} // namespace velto::test
