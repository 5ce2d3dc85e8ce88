// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "startahead.h"

#include "controls/tokens.h"
#include "presentation/rows/chattheme.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QThreadPool>

#include <fontconfig/fontconfig.h>
#include <mutex>

namespace velto::app
{

namespace
{

// What a text of the application in that size is written in.
QFont plainFont(qreal pixelSize)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(qRound(pixelSize));
    return font;
}

// Threads that want it at the same time would each read all of it.
void readFontConfiguration()
{
    static std::once_flag once;
    std::call_once(once, FcInit);
}

} // namespace

void readFontConfigurationAhead()
{
    QThreadPool::globalInstance()->start(&readFontConfiguration);
}

void readFontsAhead()
{
    QThreadPool::globalInstance()->start([font = QGuiApplication::font()] {
        readFontConfiguration();
        (void)QFontInfo(font).exactMatch();
    });
}

FileReadAhead::FileReadAhead(QQmlEngine &engine, const QUrl &file)
    : m_component(&engine, file, QQmlComponent::Asynchronous)
{}

void FileReadAhead::goOn()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::User);
}

void lookUpFonts()
{
    const auto &tokens = controls::Tokens::instance();
    const auto &theme = presentation::chatTheme();
    markdown::TextAttributes reading;
    reading.fontProperties.size = tokens.reading();
    reading.baseSize = tokens.reading();
    reading = theme.text().applied(reading);
    for (const QFont &font :
         {QGuiApplication::font(), plainFont(tokens.body()), plainFont(tokens.reading()),
          reading.fontProperties.font(), theme.strong().applied(reading).fontProperties.font(),
          theme.code().applied(reading).fontProperties.font()}) {
        FileReadAhead::goOn();
        (void)QFontMetricsF(font).horizontalAdvance(QStringLiteral("etaoin"));
    }
    FileReadAhead::goOn();
}

} // namespace velto::app
