// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/attachment.h"
#include "presentation/attachments.h"
#include "support/coroutinetest.h"
#include "support/memorysecretstore.h"
#include "support/scriptedserver.h"

#include "base/oneshot.h"

#include <QFile>
#include <QImage>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>

namespace velto::presentation
{
namespace
{

using platform::FileChooser;
using test::waitUntil;

class NoBrowser final : public platform::URLLauncher
{
public:
    QCoro::Task<bool> launch(QUrl) override { co_return false; }
};

/// A desktop whose user chooses when the test says so.
class SlowChooser final : public FileChooser
{
public:
    explicit SlowChooser(std::optional<base::OneShot<Choice>> &open)
        : m_open(open)
    {}
    ~SlowChooser() override
    {
        if (m_open)
            m_open->resolve(Cancelled{});
    }
    QCoro::Task<Choice> chooseFile(QString, quintptr) override
    {
        const base::OneShot<Choice> choice;
        m_open = choice;
        co_return co_await choice;
    }

private:
    std::optional<base::OneShot<Choice>> &m_open;
};

class AttachmentsTest : public testing::Test
{
protected:
    AttachmentsTest()
    {
        attachments->setProperty("appState", QVariant::fromValue(&state));
        attachments->setFileChooser(std::make_unique<SlowChooser>(dialog));
    }

    [[nodiscard]] QUrl file(const char *name, const QByteArray &content = "content") const
    {
        QFile file(home.filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return QUrl::fromLocalFile(file.fileName());
    }
    [[nodiscard]] static QString block(const char *name)
    {
        return attachment(QString::fromUtf8(name), "content").value();
    }
    /// Waits until the files that were given before have been read: one more comes in behind them.
    void settle()
    {
        QSignalSpy spy(attachments.get(), &Attachments::attached);
        ASSERT_TRUE(waitUntil([&] { return spy.count() > 0 || !attachments->error().isEmpty(); }));
    }

    QTemporaryDir home;
    test::ScriptedServer server;
    test::MemorySecretStore secrets;
    platform::URLOpener browser{std::make_unique<NoBrowser>()};
    chat::AppState state{
        {secrets, browser, server.url(), home.filePath(QStringLiteral("cache.json"))}};
    std::optional<base::OneShot<FileChooser::Choice>> dialog;
    std::unique_ptr<Attachments> attachments = std::make_unique<Attachments>();
};

TEST_F(AttachmentsTest, addsTheFileToTheEndOfTheDraft)
{
    state.setInputDraft(QStringLiteral("Look at this"));
    attachments->attach({file("a.txt")});
    settle();
    EXPECT_EQ(state.inputDraft(), QStringLiteral("Look at this") + block("a.txt"));
    EXPECT_TRUE(attachments->error().isEmpty());
}

TEST_F(AttachmentsTest, keepsWhatIsWrittenWhileItReads)
{
    attachments->attach({file("a.txt")});
    state.setInputDraft(QStringLiteral("typed meanwhile"));
    settle();
    EXPECT_EQ(state.inputDraft(), QStringLiteral("typed meanwhile") + block("a.txt"));
}

TEST_F(AttachmentsTest, takesSeveralInTheirOrder)
{
    attachments->attach({file("b.txt"), file("a.txt"), file("c.txt")});
    settle();
    EXPECT_EQ(state.inputDraft(), block("b.txt") + block("a.txt") + block("c.txt"));
}

TEST_F(AttachmentsTest, takesWhatItCanAndTellsTheFirstFailure)
{
    QSignalSpy told(attachments.get(), &Attachments::errorChanged);
    attachments->attach({file("a.txt"), file("big", QByteArray(300'000, 'x')),
                         file("picture", "\xFF"), file("b.txt")});
    ASSERT_TRUE(waitUntil([&] { return !attachments->error().isEmpty(); }));
    EXPECT_EQ(state.inputDraft(), block("a.txt") + block("b.txt"));
    EXPECT_TRUE(attachments->error().startsWith(QStringLiteral("File is too large (300 KB)")));
    EXPECT_EQ(told.count(), 1);
    attachments->dismissError();
    EXPECT_TRUE(attachments->error().isEmpty());
}

TEST_F(AttachmentsTest, refusesAHeapOfFiles)
{
    QList<QUrl> files;
    for (int i = 0; i <= Attachments::mostAtOnce; ++i)
        files.append(file("a.txt"));
    attachments->attach(files);
    EXPECT_EQ(attachments->error(), u"Only 10 files can be attached at a time.");
    files.removeLast();
    attachments->dismissError();
    attachments->attach(files);
    settle();
    EXPECT_EQ(state.inputDraft(), block("a.txt").repeated(Attachments::mostAtOnce));
}

TEST_F(AttachmentsTest, knowsFilesOfThisMachine)
{
    const auto has = [](const char *url) {
        return Attachments::hasFiles({QUrl(QString::fromUtf8(url))});
    };
    EXPECT_TRUE(has("file:///tmp/a"));
    EXPECT_TRUE(has("file://localhost/tmp/a"));
    for (const char *url : {"http://127.0.0.1/a", "file://elsewhere/tmp/a", "smb://host/a", "",
                            "/tmp/a", "data:text/plain,x", "mailto:a@b"})
        EXPECT_FALSE(has(url)) << url;
}

TEST_F(AttachmentsTest, aNameWithAnythingInItIsFound)
{
    attachments->attach({file("50% #1?.txt")});
    settle();
    EXPECT_EQ(state.inputDraft(), block("50% #1?.txt"));
}

TEST_F(AttachmentsTest, theDialogsFileIsAttached)
{
    attachments->choose(nullptr);
    ASSERT_TRUE(dialog.has_value());
    dialog->resolve(file("a.txt"));
    settle();
    EXPECT_EQ(state.inputDraft(), block("a.txt"));
}

TEST_F(AttachmentsTest, choosingNothingChangesNothing)
{
    QSignalSpy needed(attachments.get(), &Attachments::ownDialogNeeded);
    attachments->choose(nullptr);
    dialog->resolve(FileChooser::Cancelled{});
    EXPECT_EQ(state.inputDraft(), u"");
    EXPECT_EQ(attachments->error(), u"");
    EXPECT_EQ(needed.count(), 0);
}

TEST_F(AttachmentsTest, asksForADialogWhereTheDesktopHasNone)
{
    QSignalSpy needed(attachments.get(), &Attachments::ownDialogNeeded);
    attachments->choose(nullptr);
    dialog->resolve(FileChooser::Unavailable{});
    EXPECT_EQ(needed.count(), 1);
}

TEST_F(AttachmentsTest, goingDropsWhatIsOpen)
{
    attachments->choose(nullptr);
    auto open = dialog;
    attachments.reset(); // the chooser's end resolves it
    EXPECT_TRUE(open->isResolved());
    EXPECT_EQ(state.inputDraft(), u"");
}

TEST_F(AttachmentsTest, goingDropsWhatIsRead)
{
    const QUrl slow = file("a.txt");
    attachments->attach({slow});
    attachments.reset();
    // Another one's file is read behind it.
    Attachments other;
    other.setProperty("appState", QVariant::fromValue(&state));
    QSignalSpy spy(&other, &Attachments::attached);
    other.attach({file("b.txt")});
    ASSERT_TRUE(waitUntil([&] { return spy.count() == 1; }));
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    EXPECT_EQ(state.inputDraft(), block("b.txt"));
}

TEST_F(AttachmentsTest, pastesFiles)
{
    QMimeData data;
    data.setUrls({file("a.txt")});
    data.setText(QStringLiteral("/somewhere/a.txt")); // file managers offer both
    EXPECT_TRUE(attachments->takeFrom(data));
    settle();
    EXPECT_EQ(state.inputDraft(), block("a.txt"));
}

TEST_F(AttachmentsTest, leavesTextToTheField)
{
    QMimeData text;
    text.setText(QStringLiteral("words"));
    QMimeData link;
    link.setUrls({QUrl(QStringLiteral("http://127.0.0.1/"))});
    link.setText(QStringLiteral("http://127.0.0.1/"));
    QMimeData both; // cells of a table
    both.setText(QStringLiteral("1\t2"));
    both.setImageData(QImage(2, 2, QImage::Format_RGB32));
    QMimeData nothing;
    for (const QMimeData *data : {&text, &link, &both, &nothing})
        EXPECT_FALSE(attachments->takeFrom(*data));
    EXPECT_EQ(attachments->error(), u"");
}

TEST_F(AttachmentsTest, saysThatAPictureIsNoText)
{
    QMimeData data;
    data.setImageData(QImage(2, 2, QImage::Format_RGB32));
    EXPECT_TRUE(attachments->takeFrom(data));
    EXPECT_EQ(attachments->error(), u"Only text-based files are supported right now.");
    EXPECT_EQ(state.inputDraft(), u"");
}

} // namespace
} // namespace velto::presentation
