// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <cstdio>

/// An empty Qt Quick window that says when its first frame stands and then does nothing.
int main(int argc, char **argv)
{
    const QGuiApplication app(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick\nWindow { visible: true; width: 960; height: 720 }");
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (window == nullptr)
        return 1;
    QObject::connect(
        window, &QQuickWindow::frameSwapped, window,
        [] {
            std::puts("first frame");
            std::fflush(stdout);
        },
        static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
    return QGuiApplication::exec();
}
