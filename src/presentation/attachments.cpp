// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/attachments.h"

#include "presentation/attachment.h"

#include <QClipboard>
#include <QDir>
#include <QFutureWatcher>
#include <QGuiApplication>
#include <QMimeData>
#include <QtConcurrentRun>

#include <utility>

namespace velto::presentation
{

namespace
{

using platform::FileChooser;

struct Read
{
    QStringList texts;
    QString error; ///< Of the first file that failed.
};

Read readAll(const QStringList &paths)
{
    Read read;
    for (const QString &path : paths) {
        const Attachment file = readAttachment(path);
        if (file)
            read.texts.append(*file);
        else if (read.error.isEmpty())
            read.error = file.error();
    }
    return read;
}

QStringList localPaths(const QList<QUrl> &urls)
{
    QStringList paths;
    for (const QUrl &url : urls) {
        // Another machine's files are not looked for on this one.
        const bool isHere = url.host().isEmpty() || url.host() == QLatin1String("localhost");
        if (url.isLocalFile() && isHere && !url.path().isEmpty())
            paths.append(QUrl::fromLocalFile(url.path(QUrl::FullyDecoded)).toLocalFile());
    }
    return paths;
}

bool holdsText(const QMimeData &data)
{
    return data.hasFormat(QStringLiteral("text/plain")) && !data.text().isEmpty();
}

} // namespace

Attachments::Attachments(QObject *parent)
    : QObject(parent)
{}

Attachments::~Attachments() = default;

void Attachments::setFileChooser(std::unique_ptr<FileChooser> chooser)
{
    m_chooser = std::move(chooser);
}

void Attachments::choose(QQuickWindow *window)
{
    if (m_chooser == nullptr)
        m_chooser = platform::makeSystemFileChooser();
    askDesktop(window == nullptr ? 0 : static_cast<quintptr>(window->winId()));
}

QCoro::Task<void> Attachments::askDesktop(quintptr window)
{
    const QPointer self(this);
    const FileChooser::Choice choice = co_await m_chooser->chooseFile(tr("Attach file"), window);
    // Also what a chooser says that goes with this object.
    if (self.isNull() || std::holds_alternative<FileChooser::Cancelled>(choice))
        co_return;
    if (const auto *file = std::get_if<QUrl>(&choice))
        attach({*file});
    else
        emit ownDialogNeeded();
}

void Attachments::attach(const QList<QUrl> &files)
{
    const QStringList paths = localPaths(files);
    if (paths.isEmpty())
        return;
    if (paths.size() > mostAtOnce)
        return setError(tr("Only %1 files can be attached at a time.").arg(int{mostAtOnce}));
    auto *reading = new QFutureWatcher<Read>(this);
    connect(reading, &QFutureWatcher<Read>::finished, this, [this, reading] {
        reading->deleteLater();
        const Read read = reading->result();
        append(read.texts);
        if (!read.error.isEmpty())
            setError(read.error);
    });
    reading->setFuture(QtConcurrent::run(readAll, paths));
}

bool Attachments::hasFiles(const QList<QUrl> &urls)
{
    return !localPaths(urls).isEmpty();
}

QUrl Attachments::homeFolder()
{
    return QUrl::fromLocalFile(QDir::homePath());
}

bool Attachments::paste()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    return data != nullptr && takeFrom(*data);
}

bool Attachments::takeFrom(const QMimeData &data)
{
    const QList<QUrl> urls = data.urls();
    if (hasFiles(urls)) {
        attach(urls);
        return true;
    }
    if (holdsText(data) || !data.hasImage())
        return false;
    setError(notTextMessage());
    return true;
}

void Attachments::append(const QStringList &texts)
{
    if (texts.isEmpty() || m_appState == nullptr)
        return;
    m_appState->setInputDraft(m_appState->inputDraft() + texts.join(QString()));
    emit attached();
}

void Attachments::setError(const QString &error)
{
    if (m_error == error)
        return;
    m_error = error;
    emit errorChanged();
}

} // namespace velto::presentation
