// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: GPL-3.0-only
