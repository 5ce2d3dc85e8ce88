// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "imageloadertest.h"

#include <QDirIterator>

namespace velto::markdown
{
namespace
{

/// What a loader still has of pictures that it once loaded.
class Kept : public ImageLoaderTest
{
protected:
    void answerFor(const QString &path)
    {
        m_server.on(path.toLatin1(), test::answer(200, test::png({2, 2})));
    }
};

TEST_F(Kept, OnDiskAcrossRestarts)
{
    restart(onDisk());
    answerWith(test::png({2, 2}));
    ASSERT_TRUE(load(m_path));
    restart(onDisk());
    m_server.on("/picture", test::answer(500));
    const base::Result<QImage> image = load(m_path);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(2, 2));
    EXPECT_EQ(requests(), 1);
}

TEST_F(Kept, WhateverItsAge)
{
    restart(onDisk());
    answerWith(test::png({2, 2}), 200,
               {{"Cache-Control", "max-age=0, must-revalidate"},
                {"Expires", "Thu, 01 Jan 1970 00:00:00 GMT"}});
    ASSERT_TRUE(load(m_path));
    restart(onDisk());
    EXPECT_TRUE(load(m_path));
    EXPECT_EQ(requests(), 1);
}

TEST_F(Kept, NotWhenTheSenderForbidsIt)
{
    restart(onDisk());
    answerWith(test::png({2, 2}), 200, {{"cache-control", "private, No-Store"}});
    ASSERT_TRUE(load(m_path));
    restart(onDisk());
    ASSERT_TRUE(load(m_path));
    EXPECT_EQ(requests(), 2);
}

TEST_F(Kept, NoErrorPage)
{
    restart(onDisk());
    answerWith(test::png({2, 2}), 404);
    EXPECT_FALSE(load(m_path));
    answerWith(test::png({2, 2}));
    restart(onDisk());
    EXPECT_TRUE(load(m_path));
    EXPECT_EQ(requests(), 2);
}

TEST_F(Kept, InMemoryAsBytesWhenTheDecodedOneHasGone)
{
    restart({}, 1);
    answerWith(test::png({2, 2}));
    answerFor(QStringLiteral("/other"));
    const base::Result<QImage> first = load(m_path);
    ASSERT_TRUE(load(QStringLiteral("/other")));
    const base::Result<QImage> again = load(m_path);
    ASSERT_TRUE(first && again);
    EXPECT_NE(first->cacheKey(), again->cacheKey());
    EXPECT_EQ(requests(), 1);
}

TEST_F(Kept, TheHundredAndFirstTakesThePlaceOfTheFirst)
{
    restart({.files = {.memoryCapacity = 0}});
    for (int number = 0; number <= 100; ++number) {
        const QString path = QStringLiteral("/%1").arg(number);
        answerFor(path);
        ASSERT_TRUE(load(path));
    }
    ASSERT_TRUE(load(QStringLiteral("/1")));
    EXPECT_EQ(m_server.count("/1"), 1);
    ASSERT_TRUE(load(QStringLiteral("/0")));
    EXPECT_EQ(m_server.count("/0"), 2);
}

TEST_F(Kept, ADamagedFileIsFetchedAgain)
{
    restart(onDisk());
    answerWith(test::png({2, 2}));
    ASSERT_TRUE(load(m_path));
    m_loader.reset();
    QDirIterator walk(m_folder.path(), QDir::Files, QDirIterator::Subdirectories);
    ASSERT_TRUE(walk.hasNext());
    QFile file(walk.next());
    ASSERT_TRUE(file.resize(file.size() - 5));
    restart(onDisk());
    EXPECT_TRUE(load(m_path));
    EXPECT_EQ(requests(), 2);
}

TEST_F(Kept, AKeptFileThatIsNoPictureIsFetchedAgain)
{
    ImageByteCache(onDisk().files).store(m_server.url(m_path), "of an older decoder");
    restart(onDisk());
    answerWith(test::png({2, 2}));
    EXPECT_TRUE(load(m_path));
    restart(onDisk());
    EXPECT_TRUE(load(m_path));
    EXPECT_EQ(requests(), 1);
}

TEST_F(Kept, NothingWhereTheFolderCanNotBeWritten)
{
    QFile file(m_folder.filePath(QStringLiteral("file")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const DefaultNetworkImageLoader::Settings nowhere{
        .files = {.directory = file.fileName() + QStringLiteral("/images")}};
    restart(nowhere);
    answerWith(test::png({2, 2}));
    EXPECT_TRUE(load(m_path));
    restart(nowhere);
    EXPECT_TRUE(load(m_path));
    EXPECT_EQ(requests(), 2);
}

} // namespace
} // namespace velto::markdown
