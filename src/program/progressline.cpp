// SPDX-License-Identifier: GPL-2.0-or-later
#include "progressline.h"

#include "terminaltext.h"

#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

const int redrawMs = 80;

/// The last column stays free, since some terminals break the line when it is written, and two for
/// the "^C" of whoever has seen enough.
const int columnsKept = 3;

const char* const toLineStart = "\r\x1b[K";

int terminalWidth()
{
    winsize size = {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

/// Columns that a character takes: East Asian ideographs and full-width forms take two.
int columnsOf(QChar c)
{
    const ushort code = c.unicode();
    return (code >= 0x1100 && code <= 0x115F) || (code >= 0x2E80 && code <= 0xD7FF) ||
                   (code >= 0xF900 && code <= 0xFAFF) || (code >= 0xFF00 && code <= 0xFF60)
               ? 2
               : 1;
}

/// The end of `text` that fits into `columns`, since names differ there.
QString endOf(const QString& text, int columns)
{
    int start = text.length();
    int used = 0;
    while (start > 0 && used + columnsOf(text.at(start - 1)) <= columns)
        used += columnsOf(text.at(--start));
    return start == 0 ? text : QChar(0x2026) + text.mid(start + 1);
}

} // namespace

ProgressLine::ProgressLine(bool enabled)
    : m_enabled(enabled && isatty(STDERR_FILENO))
{}

ProgressLine::~ProgressLine()
{
    clear();
}

void ProgressLine::show(const QString& state, const QString& path)
{
    if (!m_enabled || (m_isShown && m_sinceDrawn.elapsed() < redrawMs))
        return;
    const QString head = state + QStringLiteral("  ");
    const int width = qMax(terminalWidth() - columnsKept, 1);
    const int room = qMax(width - head.length(), 0);
    const QString line = head + endOf(terminalText(path), room);
    std::fprintf(stderr, "%s%s", toLineStart, line.left(width).toLocal8Bit().constData());
    std::fflush(stderr);
    m_isShown = true;
    m_sinceDrawn.start();
}

void ProgressLine::clear()
{
    if (!m_isShown)
        return;
    std::fputs(toLineStart, stderr);
    std::fflush(stderr);
    m_isShown = false;
}
