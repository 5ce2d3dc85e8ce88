// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/images/imagedecoder.h"

#include <QColorSpace>
#include <QDeadlineTimer>
#include <QIODevice>
#include <QImageReader>

#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>

namespace velto::markdown
{
namespace
{

constexpr std::array allowedFormats{"png",  "jpeg", "jpg", "gif",  "webp", "bmp", "ico",
                                    "tiff", "tif",  "jp2", "heif", "heic", "avif"};

/// Bytes that run out when the decoder has had its time. Decoders can't be interrupted, but they
/// read as they go.
class RationedBytes final : public QIODevice
{
public:
    RationedBytes(const QByteArray &bytes, std::function<bool()> isExhausted)
        : m_bytes(bytes)
        , m_isExhausted(std::move(isExhausted))
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    [[nodiscard]] qint64 size() const override { return m_bytes.size(); }

protected:
    qint64 readData(char *target, qint64 room) override
    {
        if (m_isExhausted())
            return -1;
        const qint64 count = std::min(room, m_bytes.size() - pos());
        if (count > 0)
            std::memcpy(target, m_bytes.constData() + pos(), static_cast<std::size_t>(count));
        return count;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    const QByteArray m_bytes;
    const std::function<bool()> m_isExhausted;
};

bool isAllowed(const QByteArray &format)
{
    return std::ranges::any_of(allowedFormats, [&](const char *one) { return format == one; });
}

bool fits(QSize size, const DecodingLimits &limits)
{
    return qint64(size.width()) * size.height() <= limits.pixels;
}

/// Qt's own limit on what a decoder may allocate, which also holds where the size is not known
/// beforehand. It is one for the whole process.
void raiseAllocationLimit()
{
    static std::once_flag once;
    std::call_once(once, [] { QImageReader::setAllocationLimit(256); });
}

QImage displayable(QImage image)
{
    const bool isOpaque = !image.hasAlphaChannel();
    image.convertTo(isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    const QColorSpace space = image.colorSpace();
    if (space.isValid() && space != QColorSpace(QColorSpace::SRgb))
        image.convertToColorSpace(QColorSpace::SRgb);
    image.setDevicePixelRatio(1);
    return image;
}

} // namespace

std::optional<QImage> decodeImage(const QByteArray &bytes, const DecodingLimits &limits,
                                  const std::function<bool()> &isUnwanted)
{
    raiseAllocationLimit();
    const QDeadlineTimer deadline(limits.time);
    const auto isExhausted = [&] { return deadline.hasExpired() || (isUnwanted && isUnwanted()); };
    RationedBytes device(bytes, isExhausted);
    QImageReader reader(&device);
    if (!isAllowed(reader.format()) || !fits(reader.size(), limits))
        return std::nullopt;
    QImage image = reader.read();
    // A decoder that ran out of bytes may hand out what it had.
    if (image.isNull() || !fits(image.size(), limits) || isExhausted())
        return std::nullopt;
    return displayable(std::move(image));
}

} // namespace velto::markdown
