// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/discname.h"

#include "enginelink/log.h"
#include "text.h"

#include <libxml/xmlreader.h>

#include <algorithm>
#include <memory>

namespace engine {

namespace {

const char metadataFolder[] = "BDMV/META/DL";
const char englishMetadata[] = "bdmt_eng.xml";

/// Bytes; more than fits on any case.
constexpr std::size_t longestName = 1000;

/// Metadata of one language takes a few hundred bytes, and the name comes first in it. The library
/// takes time with the square of an element's attributes.
constexpr std::size_t largestMetadata = std::size_t{64} * 1024;
constexpr std::size_t mostLanguages = 10;

struct FreeReader
{
    void operator()(xmlTextReader* reader) const { xmlFreeTextReader(reader); }
};
using XmlReader = std::unique_ptr<xmlTextReader, FreeReader>;

/// While it lives, what the library has to say on this thread goes into the log. Some of it, as on
/// bytes that are no text, would go to standard error whatever a reader's options are.
class LoggedErrors
{
public:
    LoggedErrors()
        : m_handler(xmlStructuredError)
        , m_context(xmlStructuredErrorContext)
    {
        xmlSetStructuredErrorFunc(nullptr, toLog);
    }
    ~LoggedErrors() { xmlSetStructuredErrorFunc(m_context, m_handler); }

    LoggedErrors(const LoggedErrors&) = delete;
    LoggedErrors& operator=(const LoggedErrors&) = delete;

private:
    static void toLog(void* /*context*/, xmlError* error)
    {
        log(std::string("disc metadata: ") +
            (error && error->message ? error->message : "damaged"));
    }

    xmlStructuredErrorFunc m_handler;
    void* m_context;
};

std::string text(const xmlChar* utf8)
{
    return utf8 ? reinterpret_cast<const char*>(utf8) : std::string();
}

std::string trimmed(const std::string& text)
{
    constexpr char blanks[] = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

/// Whether the reader is at an element called "name", in any namespace, declared or not.
bool isName(xmlTextReader* reader)
{
    const std::string element = text(xmlTextReaderConstName(reader));
    const std::size_t colon = element.find(':');
    return element.substr(colon == std::string::npos ? 0 : colon + 1) == "name";
}

/// The first name in the metadata is the disc's; those of its titles are called otherwise. Nothing
/// outside the file is read, and of its own entities only those that every XML has.
std::string firstName(const Bytes& xml)
{
    const LoggedErrors errors;
    const XmlReader reader(xmlReaderForMemory(reinterpret_cast<const char*>(xml.data()),
                                              static_cast<int>(xml.size()), nullptr, nullptr,
                                              XML_PARSE_NONET));
    std::string name;
    bool isInside = false;
    while (reader && xmlTextReaderRead(reader.get()) == 1) {
        const int node = xmlTextReaderNodeType(reader.get());
        if (isInside && (node == XML_READER_TYPE_ELEMENT || node == XML_READER_TYPE_END_ELEMENT))
            return cutUtf8(trimmed(name), longestName);
        if (isInside && (node == XML_READER_TYPE_TEXT || node == XML_READER_TYPE_CDATA))
            name += text(xmlTextReaderConstValue(reader.get()));
        isInside = isInside || (node == XML_READER_TYPE_ELEMENT && isName(reader.get()));
    }
    return {};
}

} // namespace

std::string nameFromMetadata(const DiscFiles& files)
{
    std::vector<std::string> languages = files.fileNames(metadataFolder, ".xml");
    std::stable_partition(languages.begin(), languages.end(),
                          [](const std::string& name) { return name == englishMetadata; });
    for (std::size_t i = 0; i < languages.size() && i < mostLanguages; ++i) {
        const auto bytes =
            files.read(std::string(metadataFolder) + "/" + languages[i], largestMetadata);
        std::string name = bytes ? firstName(*bytes) : std::string();
        if (!name.empty())
            return name;
    }
    return {};
}

} // namespace engine
