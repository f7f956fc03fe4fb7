// SPDX-License-Identifier: GPL-2.0-or-later
//
// make-seeds answers FOLDER ITEM…   what an engine process says of each item
// make-seeds udf DISC IMAGE         an image of a disc's folder, with UDF 2.50
// make-seeds image IMAGE SEED       an image as the target reads it: only the sectors that hold
// something
#include "bluray/bdloader.h"
#include "engine.h"
#include "libavlog.h"
#include "media/mediaimporter.h"
#include "server/itemwriter.h"
#include "server/openmovie.h"
#include "udfwriter.h"

#include <cstdio>
#include <fstream>

using namespace engine;

namespace {

/// As the target numbers what was asked.
enum class Question : char
{
    describe,
    readDisc,
    takePicture
};

class AnswerFolder
{
public:
    explicit AnswerFolder(const std::string& folder)
        : m_folder(folder)
    {}

    /// Begins a seed; the message that is written goes into it, and those behind it.
    void begin(Question question)
    {
        m_file = std::ofstream(m_folder + "/" + std::to_string(++m_count), std::ios::binary);
        m_file.put(char(question));
    }

    template <typename Table>
    void write(flatbuffers::FlatBufferBuilder& builder, flatbuffers::Offset<Table> body)
    {
        builder.Finish(
            wire::CreateMessage(builder, wire::BodyTraits<Table>::enum_value, body.Union(), 1));
        const std::uint32_t size = builder.GetSize();
        m_file.write(reinterpret_cast<const char*>(&size), sizeof(size));
        m_file.write(reinterpret_cast<const char*>(builder.GetBufferPointer()), size);
    }

private:
    std::string m_folder;
    std::ofstream m_file;
    int m_count = 0;
};

void writeDescription(AnswerFolder& folder, const std::string& path)
{
    flatbuffers::FlatBufferBuilder builder;
    flatbuffers::Offset<wire::Item> item = 0;
    if (const ImporterPtr importer{fullEngine().open(path).importer}) {
        const auto* media = dynamic_cast<const MediaImporter*>(importer.get());
        item = writeItem(builder, *importer, path, media ? media->reopening().toBytes() : Bytes());
    }
    folder.begin(Question::describe);
    folder.write(builder, wire::CreateDescribed(builder, item));
}

void writeBluray(AnswerFolder& folder, const std::string& path)
{
    const std::unique_ptr<BdLoader, Release> loader(new BdLoader);
    flatbuffers::FlatBufferBuilder builder;
    if (!loader->open(path.c_str()))
        return;
    const auto disc = writeDisc(builder, *loader);
    folder.begin(Question::readDisc);
    folder.write(builder, wire::CreateDiscRead(builder, disc));
}

void writePictures(AnswerFolder& folder)
{
    const wire::Read read(1000, true, true);
    for (const int count : {0, 1, 4, 5}) {
        flatbuffers::FlatBufferBuilder builder;
        const std::vector<wire::Read> reads(std::size_t(count), read);
        const auto written = builder.CreateVectorOfStructs(reads);
        folder.begin(Question::takePicture);
        folder.write(builder, wire::CreatePictureTaken(builder, true, written, count > 0));
    }
}

/// What a process asks and tells before it answers.
void writeQuestions(AnswerFolder& folder)
{
    flatbuffers::FlatBufferBuilder told[6];
    const auto text = [&told](int i, const char* text) { return told[i].CreateString(text); };
    folder.begin(Question::describe);
    folder.write(told[0], wire::CreateConfined(told[0], 7));
    folder.write(told[1], wire::CreateLogLine(told[1], text(1, "a line")));
    folder.write(told[2], wire::CreateTellFileKind(told[2], text(2, "/item/../item")));
    folder.write(told[3], wire::CreateListFolder(told[3], text(3, "/item")));
    folder.write(told[4], wire::CreateOpenFile(told[4], text(4, "/item/file")));
    folder.write(told[5], wire::CreateDescribed(told[5], 0, false, 5));
}

int writeAnswers(const std::string& folder, char** items)
{
    joinLibavLog();
    AnswerFolder answers(folder);
    writeQuestions(answers);
    writePictures(answers);
    for (; *items; ++items) {
        writeDescription(answers, *items);
        writeBluray(answers, *items);
    }
    return 0;
}

int packImage(const char* image, const char* seed)
{
    constexpr std::size_t sectorSize = 2048;
    std::ifstream in(image, std::ios::binary);
    std::ofstream out(seed, std::ios::binary);
    char sector[sectorSize];
    for (unsigned number = 0; in.read(sector, sectorSize); ++number) {
        std::size_t size = sectorSize;
        while (size > 0 && sector[size - 1] == 0)
            --size;
        if (size == 0)
            continue;
        out.put(char(number)).put(char(number >> 8)).put(char(size)).put(char(size >> 8));
        out.write(sector, std::streamsize(size));
    }
    return out.flush() ? 0 : 1;
}

} // namespace

int main(int count, char** arguments)
{
    const std::string what = count > 3 ? arguments[1] : "";
    if (what == "answers")
        return writeAnswers(arguments[2], arguments + 3);
    if (what == "image")
        return packImage(arguments[2], arguments[3]);
    if (what == "udf") {
        writeUdfImage(QString::fromLocal8Bit(arguments[2]), QString::fromLocal8Bit(arguments[3]),
                      "SEED");
        return 0;
    }
    std::fputs("usage: make-seeds answers|udf|image ...\n", stderr);
    return 2;
}
