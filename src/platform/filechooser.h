// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoroTask>

#include <QUrl>

#include <memory>
#include <variant>

namespace velto::platform
{

/// Lets the user choose a file in the desktop's own dialog. Main thread.
class FileChooser
{
public:
    /// The user chose nothing.
    struct Cancelled
    {
        bool operator==(const Cancelled &) const = default;
    };
    /// This desktop has no dialog; nobody has seen any.
    struct Unavailable
    {
        bool operator==(const Unavailable &) const = default;
    };
    using Choice = std::variant<QUrl, Cancelled, Unavailable>;

    /// Takes a dialog that is still open off the screen; who waits for it gets `Cancelled`.
    virtual ~FileChooser() = default;

    /// One existing file, whatever its kind. `window` is the id of the window that the dialog
    /// belongs to, 0 for none. While a dialog is open there is no second one: `Cancelled` at once.
    [[nodiscard]] virtual QCoro::Task<Choice> chooseFile(QString title, quintptr window) = 0;
};

/// That of the system that this was built for.
[[nodiscard]] std::unique_ptr<FileChooser> makeSystemFileChooser();

} // namespace velto::platform
