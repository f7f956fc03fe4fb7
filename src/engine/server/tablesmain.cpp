// SPDX-License-Identifier: GPL-2.0-or-later
//
// vspimport-tables describes DVDs while vspimport-engine still loads the hundred libraries of
// libav, of which DVDs need none until their pictures are taken.
#include "dvd/dvdimporter.h"
#include "engine.h"
#include "server/program.h"

namespace {

class TablesEngine final : public engine::Engine
{
public:
    engine::Opening open(const std::string& path) override
    {
        return engine::DvdImporter::open(path, nullptr);
    }

    AVBased::IAVImporter* openTimeline(const std::string&) override { return nullptr; }
    engine::Bytes reopening(const AVBased::IAVImporter&) override { return {}; }
    AVBased::IAVImporter* reopen(const std::string&, const engine::Bytes&) override
    {
        return nullptr;
    }
    AVBased::IBDLoader* openDisc(const std::string&) override { return nullptr; }
    AVBased::IImageConverter* createConverter(unsigned, unsigned) override { return nullptr; }
};

} // namespace

int main(int argc, char** argv)
{
    TablesEngine tables;
    return engine::runProgram(argc, argv, tables);
}
