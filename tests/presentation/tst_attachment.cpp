// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/attachment.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace velto::presentation
{
namespace
{

const auto unreadable = QStringLiteral("Couldn't read the file.");
const auto notText = QStringLiteral("Only text-based files are supported right now.");

QString tooLarge(int thousands)
{
    return QStringLiteral("File is too large (%1 KB). Inline attachments are limited to 250 KB.")
        .arg(thousands);
}

struct Name
{
    const char *name;
    const char *extension;
};

class AttachmentName : public testing::TestWithParam<Name>
{};

TEST_P(AttachmentName, opensTheFence)
{
    const QString name = QString::fromUtf8(GetParam().name);
    EXPECT_EQ(attachment(name, "x").value(),
              QStringLiteral("\n\n```") + QString::fromUtf8(GetParam().extension) +
                  QStringLiteral(" attachment=") + name + QStringLiteral("\nx\n```\n"));
}

INSTANTIATE_TEST_SUITE_P(Names, AttachmentName,
                         testing::Values(Name{"notes.txt", "txt"}, Name{"README", "readme"},
                                         Name{".bashrc", "bashrc"}, Name{"a.b.", "b"},
                                         Name{"a..b", "b"}, Name{"...", ""}, Name{"", ""},
                                         Name{"Main.CPP", "cpp"}, Name{"a.tar.GZ", "gz"},
                                         Name{"two words.md", "md"}, Name{"Übung.ÄÖ", "äö"},
                                         Name{"no dot at all", "no dot at all"}));

TEST(Attachment, keepsTheTextAsItIs)
{
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray("a\r\nb\rc\n"), QByteArray("a\0b\0", 4),
          QByteArray("\xEF\xBB\xBFmark"), QByteArray("```\n"), QByteArray("\xC2\xA0\xE2\x80\xA8"),
          QByteArray("\xF0\x9F\x8C\x8A \xE6\xBD\xAE \xD7\x92")}) {
        const QString text = attachment(QStringLiteral("a.txt"), bytes).value();
        const QByteArray expected = "\n\n```txt attachment=a.txt\n" + bytes + "\n```\n";
        EXPECT_EQ(text.toUtf8(), expected) << bytes.toHex().constData();
    }
}

TEST(Attachment, refusesWhatIsNoUTF8)
{
    for (const QByteArray &bytes :
         {QByteArray("\xFF\xFE"), QByteArray("caf\xE9"), QByteArray("cut \xE2\x82"),
          QByteArray("\xC0\x80"), QByteArray("\xED\xA0\x80"), QByteArray("\xF4\x90\x80\x80"),
          QByteArray("\x80"), QByteArray("\x89PNG\r\n\x1a\n\0\0", 10)}) {
        EXPECT_EQ(attachment(QStringLiteral("a"), bytes).error(), notText)
            << bytes.toHex().constData();
    }
}

TEST(Attachment, takes256000BytesAndNotOneMore)
{
    const QString text = attachment(QStringLiteral("a.b"), QByteArray(256'000, 'x')).value();
    EXPECT_EQ(text.count(u'x'), 256'000);
    EXPECT_EQ(attachment(QStringLiteral("a.b"), QByteArray(256'001, 'x')).error(), tooLarge(256));
    EXPECT_EQ(attachment(QStringLiteral("a.b"), QByteArray(256'999, 'x')).error(), tooLarge(256));
    EXPECT_EQ(attachment(QStringLiteral("a.b"), QByteArray(257'000, 'x')).error(), tooLarge(257));
}

TEST(Attachment, tellsTheSizeBeforeItLooksAtTheText)
{
    EXPECT_EQ(attachment(QStringLiteral("a"), QByteArray(300'000, '\xFF')).error(), tooLarge(300));
}

class ReadingAttachment : public testing::Test
{
protected:
    [[nodiscard]] QString path(const char *name) const
    {
        return folder.filePath(QString::fromUtf8(name));
    }
    [[nodiscard]] QString write(const char *name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return file.fileName();
    }

    QTemporaryDir folder;
};

TEST_F(ReadingAttachment, givesTheFileUnderItsName)
{
    EXPECT_EQ(readAttachment(write("Ä b.Py", "x = 1\n")).value(),
              QStringLiteral("\n\n```py attachment=Ä b.Py\nx = 1\n\n```\n"));
    EXPECT_TRUE(QFile::link(path("Ä b.Py"), path("link.txt")));
    EXPECT_EQ(readAttachment(path("link.txt")).value(),
              QStringLiteral("\n\n```txt attachment=link.txt\nx = 1\n\n```\n"));
}

TEST_F(ReadingAttachment, holdsTheLimit)
{
    EXPECT_TRUE(readAttachment(write("fits", QByteArray(256'000, 'x'))).has_value());
    EXPECT_EQ(readAttachment(write("not", QByteArray(256'001, 'x'))).error(), tooLarge(256));
}

TEST_F(ReadingAttachment, readsNothingOfAHugeFile)
{
    QFile file(path("huge"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    // A hole of a terabyte: whoever reads it never ends.
    ASSERT_TRUE(file.resize(1'000'000'000'000));
    EXPECT_EQ(readAttachment(path("huge")).error(), tooLarge(1'000'000'000));
}

TEST_F(ReadingAttachment, refusesWhatIsNoRegularFile)
{
    ASSERT_EQ(::mkfifo(path("pipe").toLocal8Bit().constData(), 0600), 0);
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("folder")));
    ASSERT_TRUE(QFile::link(path("nowhere"), path("dangling")));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const QByteArray name = path("socket").toLocal8Bit();
    ASSERT_LT(static_cast<std::size_t>(name.size()), sizeof(address.sun_path));
    std::copy(name.begin(), name.end(), static_cast<char *>(address.sun_path));
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)), 0);
    for (const QString &file :
         {path("pipe"), path("folder"), path("dangling"), path("socket"), path("vanished"),
          QStringLiteral("/dev/zero"), QStringLiteral("/dev/tty"), QStringLiteral("/dev/null"),
          QString(), QStringLiteral("/proc/self/mem")})
        EXPECT_EQ(readAttachment(file).error(), unreadable) << qPrintable(file);
    ::close(socket);
}

TEST_F(ReadingAttachment, readsFilesWhoseSizeIsNotTold)
{
    // The kernel's own say that they are empty.
    EXPECT_TRUE(readAttachment(QStringLiteral("/proc/self/status"))
                    .value()
                    .contains(QStringLiteral("tst_attachment")));
}

TEST_F(ReadingAttachment, refusesWhatMayNotBeRead)
{
    const QString file = write("secret", "x");
    ASSERT_TRUE(QFile::setPermissions(file, {}));
    if (::geteuid() == 0) {
        // Nothing is forbidden to root, so somebody else asks.
        ASSERT_EQ(::chmod(folder.path().toLocal8Bit().constData(), 0755), 0);
        ASSERT_EQ(::seteuid(65534), 0);
    }
    const Attachment read = readAttachment(file);
    ASSERT_EQ(::seteuid(::getuid()), 0);
    EXPECT_EQ(read.error(), unreadable);
}

} // namespace
} // namespace velto::presentation
