// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/discname.h"

#include <unicode/unistr.h>

#include <algorithm>
#include <cstdlib>

namespace engine {

namespace {

const char metadataFolder[] = "BDMV/META/DL";
const char englishMetadata[] = "bdmt_eng.xml";

struct Entity
{
    const char* name;
    char letter;
};
const Entity entities[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};

/// What stands for `&name;`; nothing when that is not known.
std::string resolve(const std::string& name)
{
    for (const Entity& entity : entities) {
        if (name == entity.name)
            return std::string(1, entity.letter);
    }
    if (name.size() < 2 || name[0] != '#')
        return {};
    const bool isHexadecimal = name[1] == 'x';
    const long code =
        std::strtol(name.c_str() + (isHexadecimal ? 2 : 1), nullptr, isHexadecimal ? 16 : 10);
    std::string utf8;
    if (code >= 0x20 && code <= 0x10FFFF)
        icu::UnicodeString(static_cast<UChar32>(code)).toUTF8String(utf8);
    return utf8;
}

std::string decodeEntities(const std::string& text)
{
    constexpr std::size_t longestEntity = 8;
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string ahead = text[i] == '&' ? text.substr(i + 1, longestEntity + 1) : "";
        const std::size_t length = ahead.find(';');
        if (length == std::string::npos) {
            decoded += text[i];
            continue;
        }
        decoded += resolve(ahead.substr(0, length));
        i += length + 1;
    }
    return decoded;
}

std::string trimmed(const std::string& text)
{
    constexpr char blanks[] = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

/// Whether a tag, without its brackets, opens an element called "name" in any namespace.
bool opensName(const std::string& tag)
{
    const std::string element = tag.substr(0, tag.find_first_of(" \t\r\n/"));
    const std::size_t colon = element.find(':');
    return element.substr(colon == std::string::npos ? 0 : colon + 1) == "name";
}

/// The first name in the metadata is the disc's; those of its titles are called otherwise.
std::string firstName(const std::string& xml)
{
    std::size_t end = 0;
    for (;;) {
        const std::size_t begin = xml.find('<', end);
        end = xml.find('>', begin);
        if (begin == std::string::npos || end == std::string::npos)
            return {};
        if (!opensName(xml.substr(begin + 1, end - begin - 1)))
            continue;
        const std::size_t close = xml.find('<', end);
        if (close == std::string::npos)
            return {};
        return trimmed(decodeEntities(xml.substr(end + 1, close - end - 1)));
    }
}

} // namespace

std::string nameFromMetadata(const DiscFiles& files)
{
    std::vector<std::string> languages = files.fileNames(metadataFolder, ".xml");
    std::stable_partition(languages.begin(), languages.end(),
                          [](const std::string& name) { return name == englishMetadata; });
    constexpr std::size_t mostLanguages = 50;
    for (std::size_t i = 0; i < languages.size() && i < mostLanguages; ++i) {
        const auto bytes = files.read(std::string(metadataFolder) + "/" + languages[i]);
        std::string name =
            bytes ? firstName(std::string(bytes->begin(), bytes->end())) : std::string();
        if (!name.empty())
            return name;
    }
    return {};
}

} // namespace engine
