// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

namespace AVBased {
class IAVImporter;
}

namespace engine {

/// What one kind of importer says to a path.
struct Opening
{
    enum class Answer
    {
        notMine, ///< not of this kind: ask the next
        opened,  ///< `importer` is the caller's
        refused  ///< of this kind, but it cannot be used; nobody else is asked
    };

    Answer answer = Answer::notMine;
    AVBased::IAVImporter* importer = nullptr;

    static Opening notMine() { return {}; }
    static Opening refused() { return {Answer::refused, nullptr}; }
    static Opening opened(AVBased::IAVImporter* importer) { return {Answer::opened, importer}; }
};

} // namespace engine
