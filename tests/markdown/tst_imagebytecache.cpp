// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/images/imagebytecache.h"

#include <QDirIterator>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace velto::markdown
{
namespace
{

constexpr qint64 mebibyte = 1024 * 1024;

QUrl numbered(int number)
{
    return QUrl(QStringLiteral("http://pictures.example/%1.png").arg(number));
}

class ImageFiles : public testing::Test
{
protected:
    [[nodiscard]] ImageByteCacheSettings onDisk(qint64 capacity = 100 * mebibyte) const
    {
        return {.diskCapacity = capacity, .directory = m_folder.path()};
    }
    /// Nothing is left in memory, so what it has comes from the disk.
    [[nodiscard]] ImageByteCacheSettings onDiskOnly(qint64 capacity = 100 * mebibyte) const
    {
        return {.memoryCapacity = 0, .diskCapacity = capacity, .directory = m_folder.path()};
    }
    [[nodiscard]] QStringList files() const
    {
        QStringList found;
        QDirIterator walk(m_folder.path(), QDir::Files, QDirIterator::Subdirectories);
        while (walk.hasNext())
            found.append(walk.next());
        return found;
    }
    [[nodiscard]] qint64 bytesOnDisk() const
    {
        qint64 sum = 0;
        for (const QString &file : files())
            sum += QFileInfo(file).size();
        return sum;
    }

    QTemporaryDir m_folder;
};

TEST_F(ImageFiles, DefaultCapacitiesAndFolder)
{
    const ImageByteCacheSettings settings;
    EXPECT_EQ(settings.memoryCapacity, 10485760);
    EXPECT_EQ(settings.diskCapacity, 104857600);
    EXPECT_EQ(defaultImageCacheDirectory(),
              QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
                  QStringLiteral("/velto/images"));
}

TEST_F(ImageFiles, WhatWasNeverStoredIsNotThere)
{
    ImageByteCache cache(onDisk());
    EXPECT_EQ(cache.bytes(numbered(1)), std::nullopt);
}

TEST_F(ImageFiles, ComeBackAfterARestart)
{
    ImageByteCache(onDisk()).store(numbered(1), "picture");
    EXPECT_EQ(ImageByteCache(onDisk()).bytes(numbered(1)), "picture");
}

TEST_F(ImageFiles, AreReplaced)
{
    ImageByteCache cache(onDiskOnly());
    cache.store(numbered(1), "old");
    cache.store(numbered(1), "new");
    EXPECT_EQ(cache.bytes(numbered(1)), "new");
}

TEST_F(ImageFiles, AreRemovedFromMemoryAndDisk)
{
    ImageByteCache cache(onDisk());
    cache.store(numbered(1), "picture");
    cache.remove(numbered(1));
    EXPECT_EQ(cache.bytes(numbered(1)), std::nullopt);
    EXPECT_EQ(ImageByteCache(onDisk()).bytes(numbered(1)), std::nullopt);
}

TEST_F(ImageFiles, AFragmentMakesNoOtherFile)
{
    ImageByteCache cache(onDisk());
    cache.store(QUrl(QStringLiteral("http://a.example/x.png#dark")), "picture");
    EXPECT_EQ(cache.bytes(QUrl(QStringLiteral("http://a.example/x.png#light"))), "picture");
    EXPECT_EQ(cache.bytes(QUrl(QStringLiteral("http://a.example/x.png?dark"))), std::nullopt);
}

TEST_F(ImageFiles, MemoryIsBoundedByBytes)
{
    ImageByteCache cache({.memoryCapacity = 100, .directory = std::nullopt});
    for (int number = 0; number < 4; ++number)
        cache.store(numbered(number), QByteArray(30, 'x'));
    EXPECT_EQ(cache.bytes(numbered(0)), std::nullopt);
    EXPECT_NE(cache.bytes(numbered(1)), std::nullopt);
}

TEST_F(ImageFiles, MemoryForgetsWhatWasUsedLongestAgo)
{
    ImageByteCache cache({.memoryCapacity = 100, .directory = std::nullopt});
    for (int number = 0; number < 3; ++number)
        cache.store(numbered(number), QByteArray(30, 'x'));
    ASSERT_NE(cache.bytes(numbered(0)), std::nullopt);
    cache.store(numbered(3), QByteArray(30, 'x'));
    EXPECT_NE(cache.bytes(numbered(0)), std::nullopt);
    EXPECT_EQ(cache.bytes(numbered(1)), std::nullopt);
}

TEST_F(ImageFiles, WhatIsLargerThanTheMemoryIsOnDisk)
{
    ImageByteCache cache({.memoryCapacity = 10, .directory = m_folder.path()});
    cache.store(numbered(1), QByteArray(30, 'x'));
    EXPECT_EQ(cache.bytes(numbered(1)), QByteArray(30, 'x'));
}

TEST_F(ImageFiles, DiskIsBoundedAndForgetsTheOldest)
{
    ImageByteCache cache(onDiskOnly(mebibyte));
    for (int number = 0; number < 20; ++number)
        cache.store(numbered(number), QByteArray(mebibyte / 8, 'x'));
    EXPECT_LE(bytesOnDisk(), mebibyte + mebibyte / 4);
    EXPECT_EQ(cache.bytes(numbered(0)), std::nullopt);
    EXPECT_NE(cache.bytes(numbered(19)), std::nullopt);
}

TEST_F(ImageFiles, OnePictureDoesNotFillTheDisk)
{
    ImageByteCache cache(onDiskOnly(mebibyte));
    cache.store(numbered(1), QByteArray(mebibyte * 9 / 10, 'x'));
    EXPECT_EQ(cache.bytes(numbered(1)), std::nullopt);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ImageFiles, AreForTheUserOnly)
{
    const QString folder = m_folder.filePath(QStringLiteral("images"));
    ImageByteCache({.directory = folder}).store(numbered(1), "picture");
    constexpr QFile::Permissions others = QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther;
    EXPECT_EQ(QFileInfo(folder).permissions() & others, QFile::Permissions());
}

TEST_F(ImageFiles, AFolderThatCanNotBeMadeIsNoHindrance)
{
    QFile file(m_folder.filePath(QStringLiteral("file")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ImageByteCache cache({.directory = file.fileName() + QStringLiteral("/images")});
    cache.store(numbered(1), "picture");
    EXPECT_EQ(cache.bytes(numbered(1)), "picture");
}

TEST_F(ImageFiles, AFolderThatVanishesIsMadeAgain)
{
    const QString folder = m_folder.filePath(QStringLiteral("images"));
    ImageByteCache({.directory = folder}).store(numbered(1), "picture");
    ASSERT_TRUE(QDir(folder).removeRecursively());
    ImageByteCache cache({.memoryCapacity = 0, .directory = folder});
    EXPECT_EQ(cache.bytes(numbered(1)), std::nullopt);
    cache.store(numbered(1), "again");
    EXPECT_EQ(cache.bytes(numbered(1)), "again");
}

enum class Damage { Emptied, Cut, LastByteChanged, FirstByteChanged, Noise, BecameFolder };

class DamagedImageFiles : public ImageFiles, public testing::WithParamInterface<Damage>
{
protected:
    static void damage(const QString &path)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QByteArray bytes = file.readAll();
        file.close();
        switch (GetParam()) {
        case Damage::Emptied:
            bytes.clear();
            break;
        case Damage::Cut:
            bytes.chop(3);
            break;
        case Damage::LastByteChanged:
            bytes.back() = 'X';
            break;
        case Damage::FirstByteChanged:
            bytes.front() = 'X';
            break;
        case Damage::Noise:
            bytes = QByteArray(5000, '\xff');
            break;
        case Damage::BecameFolder:
            ASSERT_TRUE(file.remove());
            ASSERT_TRUE(QDir().mkpath(path));
            return;
        }
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }
};

TEST_P(DamagedImageFiles, AreNotThere)
{
    ImageByteCache(onDisk()).store(numbered(1), "picture");
    ASSERT_EQ(files().size(), 1);
    damage(files().first());
    ImageByteCache cache(onDiskOnly());
    EXPECT_EQ(cache.bytes(numbered(1)), std::nullopt);
    cache.store(numbered(2), "another");
    EXPECT_EQ(cache.bytes(numbered(2)), "another");
}

INSTANTIATE_TEST_SUITE_P(All, DamagedImageFiles,
                         testing::Values(Damage::Emptied, Damage::Cut, Damage::LastByteChanged,
                                         Damage::FirstByteChanged, Damage::Noise,
                                         Damage::BecameFolder));

} // namespace
} // namespace velto::markdown
