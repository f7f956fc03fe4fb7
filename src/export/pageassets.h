// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

/// What is in every page: its looks, on screens and on paper, and the filter.
extern const char* const pageStyle;
extern const char* const pageScript;
