// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/attachment.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velto::presentation
{

namespace
{

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(velto::presentation::Attachments)
};

QString unreadableMessage()
{
    return Text::tr("Couldn't read the file.");
}

// The number counts thousands and the limit 1,024s, as the rest of the product says them.
QString tooLargeMessage(qint64 bytes)
{
    return Text::tr("File is too large (%1 KB). Inline attachments are limited to 250 KB.")
        .arg(bytes / 1000);
}

QString extension(const QString &fileName)
{
    const QStringList pieces = fileName.split(u'.', Qt::SkipEmptyParts);
    return pieces.isEmpty() ? QString() : pieces.last().toLower();
}

/// A file that is closed with it.
class Descriptor final
{
public:
    explicit Descriptor(const QByteArray &path)
        // A pipe that nobody writes to would otherwise hold the thread for good.
        : m_number(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK))
    {}
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    Q_DISABLE_COPY_MOVE(Descriptor)

    /// Its size as the system tells it; none unless it is a regular file.
    [[nodiscard]] std::optional<qint64> regularSize() const
    {
        struct stat status = {};
        if (m_number < 0 || ::fstat(m_number, &status) != 0 || !S_ISREG(status.st_mode))
            return std::nullopt;
        return status.st_size;
    }

    /// At most `limit` bytes; none when reading fails.
    [[nodiscard]] std::optional<QByteArray> read(qint64 limit) const
    {
        QByteArray bytes;
        std::array<char, 65536> piece; // NOLINT(cppcoreguidelines-pro-type-member-init)
        while (bytes.size() < limit) {
            const auto wanted = std::min<qint64>(piece.size(), limit - bytes.size());
            const ssize_t got = ::read(m_number, piece.data(), static_cast<std::size_t>(wanted));
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                return std::nullopt;
            if (got == 0)
                break;
            bytes.append(piece.data(), got);
        }
        return bytes;
    }

private:
    int m_number;
};

// Opening a device may do something to it, so they are told apart before that too.
bool isRegular(const QByteArray &path)
{
    struct stat status = {};
    return ::stat(path.constData(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

Attachment attachment(const QString &fileName, const QByteArray &bytes)
{
    if (bytes.size() > attachmentLimit)
        return tl::unexpected(tooLargeMessage(bytes.size()));
    using Flag = QStringConverter::Flag;
    QStringDecoder decoder(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    const QString text = decoder(bytes);
    if (decoder.hasError())
        return tl::unexpected(notTextMessage());
    return QStringLiteral("\n\n```") + extension(fileName) + QStringLiteral(" attachment=") +
           fileName + u'\n' + text + QStringLiteral("\n```\n");
}

Attachment readAttachment(const QString &path)
{
    const QByteArray encoded = QFile::encodeName(path);
    if (!isRegular(encoded))
        return tl::unexpected(unreadableMessage());
    const Descriptor file(encoded);
    const auto size = file.regularSize();
    if (!size)
        return tl::unexpected(unreadableMessage());
    if (*size > attachmentLimit)
        return tl::unexpected(tooLargeMessage(*size));
    // It may grow meanwhile, and some systems' files have no size until they are read.
    const auto bytes = file.read(attachmentLimit + 1);
    if (!bytes)
        return tl::unexpected(unreadableMessage());
    return attachment(QFileInfo(path).fileName(), *bytes);
}

QString notTextMessage()
{
    return Text::tr("Only text-based files are supported right now.");
}

} // namespace velto::presentation
