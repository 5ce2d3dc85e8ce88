// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "replay.h"

#include "themes.h"

#include "controls/tokens.h"

namespace velto::gallery
{

using controls::Tokens;

namespace
{

constexpr int deltaInterval = 5; ///< Milliseconds.
const QString assets = QStringLiteral(":/qt/qml/Velto/Gallery/images/");

} // namespace

Replay::Replay(const Settings &settings)
    : m_name(settings.name)
    , m_text(settings.text)
    , m_themeName(settings.themeName)
    , m_isDark(settings.isDark)
    , m_speed(settings.speed)
    , m_scrollTo(settings.scrollTo)
    , m_images(assets)
    , m_inlineImages(std::make_shared<markdown::AssetInlineImageProvider>(assets))
{
    Tokens::instance().setScheme(m_isDark ? Tokens::Scheme::Dark : Tokens::Scheme::Light);
}

void Replay::setView(markdown::Markdown *view)
{
    if (m_view == view)
        return;
    m_view = view;
    emit viewChanged();
    if (view == nullptr)
        return;
    view->setImageProvider(&m_images);
    view->setInlineImageProvider(m_inlineImages);
    view->setTheme(themeNamed(m_themeName));
}

void Replay::setDark(bool isDark)
{
    if (m_isDark == isDark)
        return;
    m_isDark = isDark;
    Tokens::instance().setScheme(isDark ? Tokens::Scheme::Dark : Tokens::Scheme::Light);
    emit darkChanged();
}

void Replay::setThemeName(const QString &name)
{
    if (m_themeName == name)
        return;
    m_themeName = name;
    if (m_view != nullptr)
        m_view->setTheme(themeNamed(name));
    emit themeNameChanged();
}

void Replay::nextTheme()
{
    const QStringList names = themeNames();
    setThemeName(names[(names.indexOf(m_themeName) + 1) % names.size()]);
}

void Replay::showAll()
{
    m_timer.stop();
    if (m_view != nullptr)
        m_view->setText(m_text);
    emit runningChanged();
}

void Replay::start()
{
    if (m_view == nullptr)
        return;
    m_view->setText({});
    m_shown = 0;
    m_clock.start();
    m_timer.start(deltaInterval, Qt::PreciseTimer, this);
    emit runningChanged();
}

void Replay::timerEvent(QTimerEvent *)
{
    const qsizetype wanted = std::min<qsizetype>(m_text.size(), m_clock.elapsed() * m_speed / 1000);
    if (m_view != nullptr)
        m_view->append(m_text.sliced(m_shown, wanted - m_shown));
    m_shown = wanted;
    if (m_shown < m_text.size())
        return;
    m_timer.stop();
    emit runningChanged();
}

} // namespace velto::gallery
