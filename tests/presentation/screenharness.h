// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/appstate.h"

#include "support/memorysecretstore.h"
#include "support/scriptedserver.h"

#include <QAccessible>
#include <QMimeData>
#include <QQuickItem>
#include <QTemporaryDir>
#include <QVariantMap>

#include <memory>

namespace velto::test
{

/// A real AppState against a scripted service, for tests that are written in QML.
class ScreenHarness final : public QObject
{
    Q_OBJECT
    /// Asked for chat answers so far.
    Q_PROPERTY(int chatRequests READ chatRequests NOTIFY requestsChanged FINAL)

public:
    explicit ScreenHarness(QObject *parent = nullptr);
    ~ScreenHarness() override;

    [[nodiscard]] int chatRequests() const;

    /// A state of its own for each test, `Bootstrapping` and with nothing in it.
    Q_INVOKABLE velto::chat::AppState *newState();
    Q_INVOKABLE void cacheConversation(int messages);
    /// Starts the session; it stays `Bootstrapping` while the service is told to be slow.
    Q_INVOKABLE void bootstrap(bool hasToken, bool slowService);
    /// The next chat answer: frames as JSON texts, and whether the stream ends then.
    Q_INVOKABLE void answerChat(const QStringList &frames, bool ends);
    Q_INVOKABLE void failChat(int status, const QString &body);
    Q_INVOKABLE void sendMore(const QString &frame);
    /// The history that the service has; `list` is a JSON text.
    Q_INVOKABLE void answerHistory(const QString &list);
    /// Whatever is asked of that conversation, and its messages, is answered so.
    Q_INVOKABLE void answerConversation(const QString &id, int status, const QString &body);
    /// How often the history was asked for.
    Q_INVOKABLE [[nodiscard]] int historyRequests() const;
    /// What was asked of single conversations: method, target and body in one text each.
    Q_INVOKABLE [[nodiscard]] QStringList conversationRequests() const;
    Q_INVOKABLE [[nodiscard]] int roleOf(int row) const;
    Q_INVOKABLE [[nodiscard]] QString textOf(int row) const;
    Q_INVOKABLE [[nodiscard]] int volumeOf(int row) const;

    /// What assistive technology is told of an item; empty when it is told nothing.
    Q_INVOKABLE [[nodiscard]] static QVariantMap accessible(QQuickItem *item);
    Q_INVOKABLE static bool pressAccessibly(QQuickItem *item);
    /// Everything that assistive technology sees of the item's window, in order.
    Q_INVOKABLE [[nodiscard]] static QVariantList accessibleTree(QQuickItem *item);
    /// Text that an input method is still composing.
    Q_INVOKABLE static void compose(QQuickItem *item, const QString &preedit);
    /// What the service answers to requests of that path, with any method; `Me` at "/v1/me".
    Q_INVOKABLE void reply(const QString &path, int status, const QString &body);
    /// Answers the next request of that path when `release` is called.
    Q_INVOKABLE void hold(const QString &path);
    Q_INVOKABLE [[nodiscard]] bool isHeld() const;
    Q_INVOKABLE void release(int status, const QString &body);
    /// Requests of that path so far.
    Q_INVOKABLE [[nodiscard]] int count(const QString &path) const;
    Q_INVOKABLE [[nodiscard]] QString lastBody(const QString &path) const;
    /// Where a new file with that content is.
    Q_INVOKABLE [[nodiscard]] QUrl newFile(const QString &name, const QString &content);
    Q_INVOKABLE static void copyFiles(const QList<QUrl> &files);
    Q_INVOKABLE static void copyText(const QString &text);
    Q_INVOKABLE static void copyPicture();
    /// Drags over the middle of the item; gives whether a drop is welcome there.
    Q_INVOKABLE bool drag(QQuickItem *item, const QList<QUrl> &urls);
    /// Lets go of what was dragged last; gives what becomes of the original.
    Q_INVOKABLE int drop(QQuickItem *item);
    Q_INVOKABLE [[nodiscard]] static QList<QQuickItem *> focusableItems(QQuickItem *item);

signals:
    void requestsChanged();

private:
    struct Session;

    [[nodiscard]] static QVariantMap told(QAccessibleInterface *interface);
    static void collect(QAccessibleInterface *interface, QVariantList &list);

    std::unique_ptr<Session> m_session;
    std::unique_ptr<QMimeData> m_dragged;
};

} // namespace velto::test
