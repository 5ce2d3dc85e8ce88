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

} // namespace

void readFontConfigurationAhead()
{
    QThreadPool::globalInstance()->start([] { FcInit(); });
}

void readFontsAhead()
{
    QThreadPool::globalInstance()->start(
        [font = QGuiApplication::font()] { (void)QFontInfo(font).exactMatch(); });
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
