# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT

.PHONY: help run test gallery screenshots bench fuzz lint format

help:
	@echo 'make run     build velto and velto-local, run them together'
	@echo 'make test    build everything, run all tests in a desktop of their own'
	@echo 'make gallery show Markdown in a window, to look at it'
	@echo 'make screenshots  take pictures of every screen into build/screenshots'
	@echo 'make bench   build and run the benchmarks, write build/bench.json'
	@echo 'make fuzz    run every fuzz target for a minute'
	@echo 'make lint    clang-format, shellcheck, qmllint, clang-tidy'
	@echo 'make format  lay out the C++ sources'

run:
	@scripts/run.sh

test:
	@scripts/test.sh

gallery:
	@scripts/gallery.sh

screenshots:
	@scripts/screenshots.sh

bench:
	@scripts/bench.sh

fuzz:
	@scripts/fuzz.sh

lint:
	@scripts/lint.sh

format:
	@scripts/format.sh
