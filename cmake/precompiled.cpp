// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

// Stands for all targets that share a set of precompiled headers.
int main() {}
