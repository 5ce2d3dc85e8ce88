// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QQmlComponent>
#include <QUrl>

class QQmlEngine;

namespace velto::app
{

/// The first text waits for the system's fonts, which take as long to read as the window's screens:
/// other threads begin with both while the main thread is still busy with something else. Their
/// configuration can be read even before there is an application, their list then.
void readFontConfigurationAhead();
void readFontsAhead();

/// A QML file that the engine's own thread reads in, with everything that it imports, while the
/// main thread goes on.
class FileReadAhead final
{
public:
    FileReadAhead(QQmlEngine &engine, const QUrl &file);

    /// The engine's thread waits for this one now and then: to be called between long steps.
    static void goOn();

private:
    QQmlComponent m_component;
};

/// Looks up the fonts that most of a conversation is written in. Each look-up is a search through
/// all installed fonts, which only the thread that draws with the font can do.
void lookUpFonts();

} // namespace velto::app
