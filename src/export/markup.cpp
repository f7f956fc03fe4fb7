// SPDX-License-Identifier: GPL-2.0-or-later
#include "markup.h"

namespace {

const ushort replacement = QChar::ReplacementCharacter;

const char* entityOf(ushort unit)
{
    switch (unit) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\'':
        return "&#39;";
    default:
        return nullptr;
    }
}

/// Ends of lines, embeddings, overrides and isolates, and what is no character. The joiners stay:
/// whole scripts need them.
bool isUnshowable(ushort unit)
{
    return (unit >= 0x80 && unit < 0xa0) || (unit >= 0x2028 && unit <= 0x202e) ||
           (unit >= 0x2066 && unit <= 0x2069) || unit >= 0xfffe;
}

/// What stands for a code unit that is no part of a pair.
ushort shownUnit(ushort unit, Lines lines)
{
    if (lines == Lines::Kept && (unit == '\n' || unit == '\t'))
        return unit;
    if (unit < 0x20)
        return ushort(0x2400 + unit); // the pictures of control characters
    if (unit == 0x7f)
        return 0x2421;
    return isUnshowable(unit) || QChar::isSurrogate(unit) ? replacement : unit;
}

} // namespace

QByteArray markup(const QString& text, Lines lines)
{
    QString shown;
    shown.reserve(text.size() + text.size() / 8);
    for (int i = 0; i < text.size(); ++i) {
        const ushort unit = text.at(i).unicode();
        const bool isPair =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        const bool endsWithNext = lines == Lines::Kept && unit == '\r' && i + 1 < text.size() &&
                                  text.at(i + 1) == QLatin1Char('\n');
        if (const char* entity = entityOf(unit))
            shown += QLatin1String(entity);
        else if (isPair) {
            shown += text.at(i);
            shown += text.at(++i);
        } else if (!endsWithNext)
            shown += QChar(shownUnit(unit, lines));
    }
    return shown.toUtf8();
}
