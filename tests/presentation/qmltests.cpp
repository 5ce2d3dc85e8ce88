// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/screenharness.h"

#include "controls/accessibility.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QStandardPaths>
#include <QtQuickTest>

Q_IMPORT_QML_PLUGIN(Velto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Velto_MarkdownPlugin)
Q_IMPORT_QML_PLUGIN(Velto_PresentationPlugin)
Q_IMPORT_QML_PLUGIN(Velto_ShellPlugin)

namespace velto::test
{

class Setup final : public QObject
{
    Q_OBJECT

public slots:
    void applicationAvailable()
    {
        QStandardPaths::setTestModeEnabled(true);
        controls::installAccessibility();
    }

    void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
        auto *harness = new ScreenHarness(engine);
        engine->rootContext()->setContextProperty(QStringLiteral("harness"), harness);
    }
};

} // namespace velto::test

QUICK_TEST_MAIN_WITH_SETUP(velto, velto::test::Setup)

#include "qmltests.moc"
