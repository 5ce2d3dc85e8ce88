// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

class QObject;
class QQmlEngine;

namespace velto::markdown
{

class NetworkImageLoader;

/// Where views find the loader that they were not given one of their own: the program leaves it
/// with the engine of its windows.
class NetworkImageLoaderKey final
{
public:
    /// `loader` outlives the engine, or its views show nothing new.
    static void setLoader(QQmlEngine &engine, NetworkImageLoader *loader);
    /// The loader of the engine that `object`, or the nearest of its parents, belongs to.
    [[nodiscard]] static NetworkImageLoader *loader(const QObject *object);
};

} // namespace velto::markdown
