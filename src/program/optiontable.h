// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>

/// What completes an option's value in a shell.
enum class Completion
{
    None, ///< the option has no value, or any
    File,
    Folder,
    Words ///< those of `value`, between bars
};

/// One option of the command line: the one place from which the parser, the help, the manual page
/// and the completions of shells are made.
struct OptionText
{
    const char* name;
    const char* letter; ///< null without one
    const char* value;  ///< what the help calls it; null for an option without
    Completion completion;
    const char* help;   ///< a sentence or two
    const char* manual; ///< more of it, for those who read manuals; may be empty
};

extern const OptionText optionTable[];
extern const std::size_t optionCount;

struct ExitStatusText
{
    const char* status;
    const char* meaning;
};

extern const ExitStatusText exitStatusTable[];
extern const std::size_t exitStatusCount;

extern const char* const programSummary;
