// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/screenharness.h"

#include "chat/conversationcache.h"

#include <QAccessible>
#include <QClipboard>
#include <QDropEvent>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QInputMethodEvent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>

namespace velto::test
{

namespace
{

/// A system without a browser.
class NoBrowser final : public platform::URLLauncher
{
public:
    QCoro::Task<bool> launch(QUrl) override { co_return false; }
};

QByteArray frames(const QStringList &texts)
{
    QByteArray bytes;
    for (const QString &text : texts)
        bytes += "data: " + text.toUtf8() + "\n\n";
    return bytes;
}

} // namespace

struct ScreenHarness::Session
{
    Session()
    {
        server.on("/v1/me", answer(200, R"({"userId":"u","workspaces":[],"user":{"name":"Ada"}})"));
        server.on("/v1/conversations", answer(200, "[]"));
    }

    QTemporaryDir home;
    QString cacheFile = home.filePath(QStringLiteral("velto/last-conversation.json"));
    ScriptedServer server;
    MemorySecretStore secrets;
    platform::URLOpener browser{std::make_unique<NoBrowser>()};
    std::optional<Exchange> openAnswer;
    std::optional<Exchange> held;
    chat::AppState state{chat::AppState::Environment{secrets, browser, server.url(), cacheFile}};
};

ScreenHarness::ScreenHarness(QObject *parent)
    : QObject(parent)
{}

ScreenHarness::~ScreenHarness() = default;

int ScreenHarness::chatRequests() const
{
    return m_session ? static_cast<int>(m_session->server.count("/v1/chat")) : 0;
}

chat::AppState *ScreenHarness::newState()
{
    m_session = std::make_unique<Session>();
    connect(&m_session->server, &ScriptedServer::requestReceived, this,
            &ScreenHarness::requestsChanged);
    QJSEngine::setObjectOwnership(&m_session->state, QJSEngine::CppOwnership);
    return &m_session->state;
}

void ScreenHarness::cacheConversation(int messages)
{
    QList<chat::ChatMessage> list;
    for (int row = 0; row < messages; ++row) {
        const auto role =
            row % 2 == 0 ? chat::ChatMessage::Role::User : chat::ChatMessage::Role::Assistant;
        list.append(chat::newMessage(
            role, {chat::textPart(QStringLiteral("Message %1, in a few words.").arg(row))}));
    }
    chat::conversationcache::save(list, QStringLiteral("cached"), m_session->cacheFile);
}

void ScreenHarness::bootstrap(bool hasToken, bool slowService)
{
    if (hasToken) {
        const auto saved =
            m_session->secrets.save(QStringLiteral("ltd.orbax.velto"),
                                    QStringLiteral("refresh_token"), QStringLiteral("stored"));
        Q_ASSERT(saved.has_value());
    }
    if (slowService) {
        m_session->server.on("/auth/oauth2/token",
                             [](const RecordedRequest &, const Exchange &) {});
    } else {
        m_session->server.on(
            "/auth/oauth2/token",
            answer(200, R"({"access_token":"access","token_type":"Bearer","expires_in":900,)"
                        R"("refresh_token":"rotated"})"));
    }
    m_session->state.startBootstrap();
}

void ScreenHarness::answerChat(const QStringList &texts, bool ends)
{
    Session *session = m_session.get();
    session->server.on("/v1/chat", [=](const RecordedRequest &, const Exchange &exchange) {
        exchange.beginStream(200, {});
        exchange.send(frames(texts));
        if (ends)
            exchange.close();
        else
            session->openAnswer = exchange;
    });
}

void ScreenHarness::failChat(int status, const QString &body)
{
    m_session->server.on("/v1/chat", answer(status, body.toUtf8()));
}

void ScreenHarness::sendMore(const QString &frame)
{
    Q_ASSERT(m_session->openAnswer);
    m_session->openAnswer->send(frames({frame}));
}

void ScreenHarness::answerHistory(const QString &list)
{
    m_session->server.on("/v1/conversations", answer(200, list.toUtf8()));
}

void ScreenHarness::answerConversation(const QString &id, int status, const QString &body)
{
    const QByteArray path = "/v1/conversations/" + id.toUtf8();
    m_session->server.on(path, answer(status, body.toUtf8()));
    m_session->server.on(path + "/messages", answer(status, body.toUtf8()));
}

int ScreenHarness::historyRequests() const
{
    return static_cast<int>(
        std::ranges::count_if(m_session->server.requests(), [](const RecordedRequest &request) {
            return request.target.startsWith("/v1/conversations?");
        }));
}

QStringList ScreenHarness::conversationRequests() const
{
    QStringList list;
    for (const RecordedRequest &request : m_session->server.requests()) {
        if (request.target.startsWith("/v1/conversations/"))
            list.append(QString::fromUtf8(request.method + ' ' + request.target +
                                          (request.body.isEmpty() ? "" : " ") + request.body));
    }
    return list;
}

int ScreenHarness::roleOf(int row) const
{
    return static_cast<int>(m_session->state.messages().at(row).role);
}

QString ScreenHarness::textOf(int row) const
{
    return m_session->state.messages().at(row).plainText();
}

int ScreenHarness::volumeOf(int row) const
{
    return static_cast<int>(m_session->state.messages().at(row).contentVolume());
}

QVariantMap ScreenHarness::accessible(QQuickItem *item)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
    return interface != nullptr ? told(interface) : QVariantMap();
}

QVariantMap ScreenHarness::told(QAccessibleInterface *interface)
{
    QAccessibleTextInterface *text = interface->textInterface();
    return {{QStringLiteral("role"), static_cast<int>(interface->role())},
            {QStringLiteral("name"), interface->text(QAccessible::Name)},
            {QStringLiteral("description"), interface->text(QAccessible::Description)},
            {QStringLiteral("text"),
             text != nullptr ? text->text(0, text->characterCount()) : QString()},
            {QStringLiteral("checked"), static_cast<bool>(interface->state().checked)},
            {QStringLiteral("disabled"), static_cast<bool>(interface->state().disabled)},
            {QStringLiteral("selected"), static_cast<bool>(interface->state().selected)},
            {QStringLiteral("focused"), static_cast<bool>(interface->state().focused)}};
}

bool ScreenHarness::pressAccessibly(QQuickItem *item)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
    if (interface == nullptr || interface->actionInterface() == nullptr)
        return false;
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    return true;
}

QVariantList ScreenHarness::accessibleTree(QQuickItem *item)
{
    QVariantList list;
    collect(QAccessible::queryAccessibleInterface(item->window()), list);
    return list;
}

void ScreenHarness::collect(QAccessibleInterface *interface, QVariantList &list)
{
    for (int index = 0; index < interface->childCount(); ++index) {
        QAccessibleInterface *child = interface->child(index);
        if (child->state().invisible)
            continue;
        list.append(told(child));
        collect(child, list);
    }
}

void ScreenHarness::compose(QQuickItem *item, const QString &preedit)
{
    QInputMethodEvent event(preedit, {});
    QCoreApplication::sendEvent(item, &event);
}

void ScreenHarness::reply(const QString &path, int status, const QString &body)
{
    m_session->server.on(path.toUtf8(), answer(status, body.toUtf8()));
}

void ScreenHarness::hold(const QString &path)
{
    Session *session = m_session.get();
    session->server.on(path.toUtf8(), [=](const RecordedRequest &, const Exchange &exchange) {
        session->held = exchange;
    });
}

bool ScreenHarness::isHeld() const
{
    return m_session->held.has_value();
}

void ScreenHarness::release(int status, const QString &body)
{
    Q_ASSERT(m_session->held);
    m_session->held->respond(status, body.toUtf8());
    m_session->held.reset();
}

int ScreenHarness::count(const QString &path) const
{
    return static_cast<int>(m_session->server.count(path.toUtf8()));
}

QString ScreenHarness::lastBody(const QString &path) const
{
    QString body;
    for (const RecordedRequest &request : m_session->server.requests()) {
        if (request.target == path.toUtf8())
            body = QString::fromUtf8(request.body);
    }
    return body;
}

QUrl ScreenHarness::newFile(const QString &name, const QString &content)
{
    QFile file(m_session->home.filePath(name));
    const bool written = file.open(QIODevice::WriteOnly) && file.write(content.toUtf8()) >= 0;
    Q_ASSERT(written);
    return QUrl::fromLocalFile(file.fileName());
}

void ScreenHarness::copyFiles(const QList<QUrl> &files)
{
    auto *data = new QMimeData;
    data->setUrls(files);
    QGuiApplication::clipboard()->setMimeData(data);
}

void ScreenHarness::copyText(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

void ScreenHarness::copyPicture()
{
    QImage picture(2, 2, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QGuiApplication::clipboard()->setImage(picture);
}

bool ScreenHarness::drag(QQuickItem *item, const QList<QUrl> &urls)
{
    m_dragged = std::make_unique<QMimeData>();
    m_dragged->setUrls(urls);
    const QPoint at = item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
    QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, m_dragged.get(), Qt::LeftButton,
                          Qt::NoModifier);
    QCoreApplication::sendEvent(item->window(), &enter);
    QDragMoveEvent move(at, Qt::CopyAction | Qt::MoveAction, m_dragged.get(), Qt::LeftButton,
                        Qt::NoModifier);
    QCoreApplication::sendEvent(item->window(), &move);
    if (!move.isAccepted()) {
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(item->window(), &leave);
    }
    return move.isAccepted();
}

int ScreenHarness::drop(QQuickItem *item)
{
    const QPointF at = item->mapToScene({item->width() / 2, item->height() / 2});
    QDropEvent drop(at, Qt::CopyAction | Qt::MoveAction, m_dragged.get(), Qt::LeftButton,
                    Qt::NoModifier);
    drop.setDropAction(Qt::MoveAction);
    QCoreApplication::sendEvent(item->window(), &drop);
    return drop.isAccepted() ? static_cast<int>(drop.dropAction()) : Qt::IgnoreAction;
}

QList<QQuickItem *> ScreenHarness::focusableItems(QQuickItem *item)
{
    QList<QQuickItem *> items;
    for (QQuickItem *child : item->childItems()) {
        if (child->activeFocusOnTab())
            items.append(child);
        items.append(focusableItems(child));
    }
    return items;
}

} // namespace velto::test
