// SPDX-License-Identifier: GPL-2.0-or-later
#include "completions.h"

#include "../optiontable.h"

namespace {

/// `text` within single quotes of a shell.
QByteArray quoted(QByteArray text)
{
    return '\'' + text.replace('\'', "'\\''") + '\'';
}

QByteArray wordsOf(const OptionText& option)
{
    return QByteArray(option.value).replace('|', ' ');
}

QByteArray namesOf(const OptionText& option)
{
    const QByteArray name = QByteArray("--") + option.name;
    return option.letter ? QByteArray("-") + option.letter + ' ' + name : name;
}

/// The line of a case for the options with that completion, which `reply` fills.
QByteArray bashCase(Completion completion, const QByteArray& reply)
{
    QByteArray names;
    for (std::size_t i = 0; i < optionCount; ++i) {
        const OptionText& option = optionTable[i];
        if (option.value && option.completion == completion)
            names += QByteArray(names.isEmpty() ? "" : " | ") + "--" + option.name;
    }
    return "    " + names + ") " + reply + "; return ;;\n";
}

/// A description in zsh may hold neither brackets nor colons.
QByteArray zshText(const char* text)
{
    return QByteArray(text).replace('[', '(').replace(']', ')').replace(':', ' ');
}

QByteArray zshValue(const OptionText& option)
{
    if (!option.value)
        return QByteArray();
    static const char* const actions[] = {" ", "_files", "_files -/", nullptr};
    const char* action = actions[int(option.completion)];
    return QByteArray(":") + zshText(option.value).replace('|', ' ') + ':' +
           (action ? QByteArray(action) : '(' + wordsOf(option) + ')');
}

} // namespace

QByteArray bashCompletion()
{
    QByteArray all;
    QByteArray words;
    for (std::size_t i = 0; i < optionCount; ++i) {
        all += QByteArray(i ? " " : "") + namesOf(optionTable[i]);
        if (optionTable[i].completion == Completion::Words)
            words = wordsOf(optionTable[i]);
    }
    return "# bash completion of vspimport\n"
           "_vspimport() {\n"
           "    local word=$2 before=$3\n"
           "    COMPREPLY=()\n"
           "    case $before in\n" +
           bashCase(Completion::Words,
                    "mapfile -t COMPREPLY < <(compgen -W '" + words + "' -- \"$word\")") +
           bashCase(Completion::Folder, "mapfile -t COMPREPLY < <(compgen -d -- \"$word\")") +
           bashCase(Completion::File, "mapfile -t COMPREPLY < <(compgen -f -- \"$word\")") +
           bashCase(Completion::None, ":") +
           "    esac\n"
           "    if [[ $word == -* ]]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -W '" +
           all +
           "' -- \"$word\")\n"
           "    else\n"
           "        mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n"
           "    fi\n"
           "}\n"
           "complete -o filenames -F _vspimport vspimport\n";
}

QByteArray zshCompletion()
{
    QByteArray text = "#compdef vspimport\n_arguments -s";
    for (std::size_t i = 0; i < optionCount; ++i) {
        const OptionText& option = optionTable[i];
        const QByteArray tail = '[' + zshText(option.help) + ']' + zshValue(option);
        text += " \\\n    " + quoted("--" + QByteArray(option.name) + tail);
        if (option.letter)
            text += " \\\n    " + quoted('-' + QByteArray(option.letter) + tail);
    }
    return text + " \\\n    '*:PATH:_files'\n";
}

QByteArray fishCompletion()
{
    QByteArray text;
    for (std::size_t i = 0; i < optionCount; ++i) {
        const OptionText& option = optionTable[i];
        text += QByteArray("complete -c vspimport -l ") + option.name;
        if (option.letter)
            text += QByteArray(" -s ") + option.letter;
        if (option.completion == Completion::Words)
            text += " -x -a " + quoted(wordsOf(option));
        else if (option.value)
            text += option.completion == Completion::None ? " -x" : " -r";
        if (option.completion == Completion::Folder)
            text += " -a '(__fish_complete_directories)'";
        text += " -d " + quoted(option.help) + '\n';
    }
    return text;
}
