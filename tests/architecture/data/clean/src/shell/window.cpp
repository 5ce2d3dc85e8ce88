// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/text.h"
#include "chat/appstate.h"

#include <QQuickWindow>
