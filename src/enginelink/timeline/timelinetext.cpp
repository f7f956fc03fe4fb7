// SPDX-License-Identifier: LGPL-2.1-or-later
#include "enginelink/timeline/timelinetext.h"

#include "enginelink/ascii.h"

#include <charconv>
#include <cstdio>
#include <locale>
#include <optional>
#include <sstream>

namespace engine {

namespace {

/// A path on one line: control characters, and the percent sign itself, as %XX.
std::string escaped(const std::string& path)
{
    std::string text;
    for (const char c : path) {
        if (!isControl(c) && c != '%') {
            text += c;
            continue;
        }
        char code[4];
        std::snprintf(code, sizeof(code), "%%%02X", static_cast<unsigned char>(c));
        text += code;
    }
    return text;
}

std::optional<std::string> unescaped(const std::string& text)
{
    std::string path;
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto code = static_cast<unsigned char>(text[i]);
        if (text[i] == '%') {
            if (i + 2 >= text.size() ||
                std::from_chars(&text[i + 1], &text[i + 3], code, 16).ptr != &text[i + 3])
                return std::nullopt;
            i += 2;
        }
        if (code == 0)
            return std::nullopt;
        path += static_cast<char>(code);
    }
    return path;
}

bool parseNumber(const std::string& text, std::int32_t& number)
{
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end;
}

/// Two positive numbers with `separator` between them.
bool parsePair(const std::string& text, int& first, char separator, int& second)
{
    const std::size_t at = text.find(separator);
    return at != std::string::npos && parseNumber(text.substr(0, at), first) &&
           parseNumber(text.substr(at + 1), second) && first > 0 && second > 0;
}

bool parsePath(const std::string& text, std::string& path)
{
    const auto parsed = unescaped(text);
    if (!parsed || parsed->empty() || parsed->front() != '/')
        return false;
    path = *parsed;
    return true;
}

/// One line of an item; false when its value is none. Unknown words are passed over.
bool parseLine(const std::string& word, const std::string& value, TimelineItem& item)
{
    if (word == "file")
        return parsePath(value, item.path);
    if (word == "movie")
        return parseNumber(value, item.movie);
    if (word == "video")
        return parseNumber(value, item.videoStream);
    if (word == "audio")
        return parseNumber(value, item.audioStream);
    if (word == "subtitle")
        return parseNumber(value, item.subtitleStream);
    if (word == "in")
        return parseNumber(value, item.inMs) && item.inMs >= 0;
    if (word == "out")
        return parseNumber(value, item.outMs) && item.outMs >= 0;
    if (word == "size")
        return parsePair(value, item.width, 'x', item.height);
    if (word == "rate")
        return parsePair(value, item.frameRate.numerator, '/', item.frameRate.denominator);
    if (word == "aspect")
        return parsePair(value, item.displayAspect.numerator, ':', item.displayAspect.denominator);
    if (word == "sound")
        return parsePair(value, item.sampleRate, '/', item.channels);
    return true;
}

void printPair(std::ostream& text, const char* word, int first, char separator, int second)
{
    if (first > 0 && second > 0)
        text << "  " << word << ' ' << first << separator << second << '\n';
}

} // namespace

int parseTimeline(std::istream& file, Timeline& timeline)
{
    std::string line;
    if (!std::getline(file, line) || line != timelineFirstLine)
        return 1;
    for (int number = 2; std::getline(file, line); ++number) {
        const std::size_t start = line.find_first_not_of(" \t");
        if (start == std::string::npos || line[start] == '#')
            continue;
        const std::size_t wordEnd = std::min(line.find_first_of(" \t", start), line.size());
        const std::string word = line.substr(start, wordEnd - start);
        const std::size_t valueAt = std::min(line.find_first_not_of(" \t", wordEnd), line.size());
        const bool beginsItem = word == "source";
        if (beginsItem && timeline.items.size() < Timeline::mostItems)
            timeline.items.emplace_back();
        else if (beginsItem || timeline.items.empty() ||
                 !parseLine(word, line.substr(valueAt), timeline.items.back()))
            return number;
    }
    return 0;
}

std::string timelineText(const Timeline& timeline)
{
    std::ostringstream text;
    text.imbue(std::locale::classic()); // others group digits
    text << timelineFirstLine << '\n';
    for (const TimelineItem& item : timeline.items) {
        text << "\nsource\n";
        if (!item.path.empty())
            text << "  file " << escaped(item.path) << '\n';
        text << "  movie " << item.movie << '\n';
        text << "  video " << item.videoStream << '\n';
        text << "  audio " << item.audioStream << '\n';
        text << "  subtitle " << item.subtitleStream << '\n';
        text << "  in " << item.inMs << '\n';
        text << "  out " << item.outMs << '\n';
        printPair(text, "size", item.width, 'x', item.height);
        printPair(text, "rate", item.frameRate.numerator, '/', item.frameRate.denominator);
        printPair(text, "aspect", item.displayAspect.numerator, ':',
                  item.displayAspect.denominator);
        printPair(text, "sound", item.sampleRate, '/', item.channels);
    }
    return text.str();
}

} // namespace engine
