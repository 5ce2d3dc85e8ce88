// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "shell/refusingnetwork.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace velto::shell
{

namespace
{

class RefusedReply final : public QNetworkReply
{
    Q_OBJECT

public:
    RefusedReply(QNetworkAccessManager::Operation operation, const QNetworkRequest &request,
                 QObject *parent)
        : QNetworkReply(parent)
    {
        setOperation(operation);
        setRequest(request);
        setUrl(request.url());
        setError(ContentAccessDenied, QStringLiteral("velto's screens fetch nothing"));
        setFinished(true);
        open(ReadOnly | Unbuffered);
        // Whoever asked connects after it has the reply.
        QMetaObject::invokeMethod(
            this,
            [this] {
                emit errorOccurred(error());
                emit finished();
            },
            Qt::QueuedConnection);
    }

    void abort() override {}

protected:
    qint64 readData(char *, qint64) override { return -1; }
};

class RefusingManager final : public QNetworkAccessManager
{
    Q_OBJECT

public:
    using QNetworkAccessManager::QNetworkAccessManager;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *) override
    {
        return new RefusedReply(operation, request, this);
    }
};

} // namespace

QNetworkAccessManager *RefusingNetwork::create(QObject *parent)
{
    return new RefusingManager(parent);
}

} // namespace velto::shell

#include "refusingnetwork.moc"
