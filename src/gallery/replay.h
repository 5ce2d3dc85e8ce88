// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/imageproviders.h"
#include "markdown/render/markdown.h"

#include <QBasicTimer>
#include <QElapsedTimer>

namespace velto::gallery
{

/// Feeds a view with a document, at once or as a stream.
class Replay : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(velto::markdown::Markdown *view READ view WRITE setView NOTIFY viewChanged FINAL)
    Q_PROPERTY(int speed MEMBER m_speed NOTIFY speedChanged FINAL)
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged FINAL)
    Q_PROPERTY(bool dark READ isDark WRITE setDark NOTIFY darkChanged FINAL)
    Q_PROPERTY(QString themeName READ themeName WRITE setThemeName NOTIFY themeNameChanged FINAL)
    Q_PROPERTY(QString document MEMBER m_name CONSTANT FINAL)
    Q_PROPERTY(qreal scrollTo MEMBER m_scrollTo CONSTANT FINAL)

public:
    struct Settings
    {
        QString name;
        QString text;
        QString themeName;
        bool isDark = false;
        int speed = 1000; ///< Characters a second.
        qreal scrollTo = 0;
    };

    explicit Replay(const Settings &settings);

    [[nodiscard]] markdown::Markdown *view() const { return m_view; }
    void setView(markdown::Markdown *view);
    [[nodiscard]] bool isRunning() const { return m_timer.isActive(); }
    [[nodiscard]] bool isDark() const { return m_isDark; }
    void setDark(bool isDark);
    [[nodiscard]] QString themeName() const { return m_themeName; }
    void setThemeName(const QString &name);

    Q_INVOKABLE void showAll();
    Q_INVOKABLE void start();
    Q_INVOKABLE void nextTheme();

signals:
    void viewChanged();
    void speedChanged();
    void runningChanged();
    void darkChanged();
    void themeNameChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    QString m_name;
    QString m_text;
    QString m_themeName;
    bool m_isDark;
    int m_speed;
    qreal m_scrollTo;
    QPointer<markdown::Markdown> m_view;
    markdown::AssetImageProvider m_images;
    std::shared_ptr<markdown::AssetInlineImageProvider> m_inlineImages;
    QBasicTimer m_timer;
    QElapsedTimer m_clock;
    qsizetype m_shown = 0;
};

} // namespace velto::gallery
