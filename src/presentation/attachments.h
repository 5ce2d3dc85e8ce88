// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/appstate.h"
#include "platform/filechooser.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>

class QMimeData;

namespace velto::presentation
{

/// Puts files into the draft, from wherever they come: the file dialog, the clipboard, a drop.
/// Files are read on another thread; what has not been read when this goes is dropped.
class Attachments : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(
        velto::chat::AppState *appState MEMBER m_appState NOTIFY appStateChanged REQUIRED FINAL)
    /// Why the last file was not attached; empty when there is nothing to tell.
    Q_PROPERTY(QString error READ error NOTIFY errorChanged FINAL)

public:
    /// Files that one drop or paste may bring.
    static constexpr int mostAtOnce = 10;

    explicit Attachments(QObject *parent = nullptr);
    ~Attachments() override;

    [[nodiscard]] QString error() const { return m_error; }
    Q_INVOKABLE void dismissError() { setError({}); }
    Q_INVOKABLE void fail(const QString &error) { setError(error); }

    /// Opens the desktop's dialog over `window`, or says `ownDialogNeeded`.
    Q_INVOKABLE void choose(QQuickWindow *window);
    /// In their order, as far as they can be; the first failure is told.
    Q_INVOKABLE void attach(const QList<QUrl> &files);
    /// Whether it took what the clipboard holds: files, or a picture, of which it says that it
    /// can't be attached. Text it leaves to whoever asks.
    Q_INVOKABLE bool paste();
    /// Whether `attach` has something to read among them: files of this machine.
    Q_INVOKABLE [[nodiscard]] static bool hasFiles(const QList<QUrl> &urls);
    Q_INVOKABLE [[nodiscard]] static QUrl homeFolder();
    bool takeFrom(const QMimeData &data);

    /// Instead of the system's.
    void setFileChooser(std::unique_ptr<platform::FileChooser> chooser);

signals:
    void appStateChanged();
    void errorChanged();
    /// At least one file is in the draft now.
    void attached();
    /// The desktop has no file dialog.
    void ownDialogNeeded();

private:
    void setError(const QString &error);
    QCoro::Task<void> askDesktop(quintptr window);
    void append(const QStringList &texts);

    QPointer<chat::AppState> m_appState;
    QString m_error;
    std::unique_ptr<platform::FileChooser> m_chooser;
};

} // namespace velto::presentation
