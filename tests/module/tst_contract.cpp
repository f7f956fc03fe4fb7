// SPDX-License-Identifier: GPL-2.0-or-later
//
// The places of the operations in the engine's interfaces. The engine knows an operation by its
// place alone, so that a declaration moved by one would call something else without a word.
#include "vspavbased/iavimporter.h"
#include "vspavbased/iavmanager.h"
#include "vspavbased/iavpicture.h"
#include "vspavbased/iavsource.h"
#include "vspavbased/ibdlist.h"
#include "vspavbased/ibdloader.h"
#include "vspavbased/idvdinfo.h"
#include "vspavbased/iimageconverter.h"
#include "vspavbased/imovieinfoext.h"
#include "vspavbased/isimpleedittimeline.h"

#include <QtTest/QtTest>

#include <cstring>

using namespace AVBased;

namespace {

using List = QList<int>;

/// The places of virtual operations in their tables: in the Itanium ABI the pointer to one holds
/// the offset in bytes plus one.
template <typename... Operations>
List slotsOf(Operations... operations)
{
    const auto slotOf = [](auto operation) {
        std::ptrdiff_t value = 0;
        std::memcpy(&value, &operation, sizeof(value));
        return int((value - 1) / std::ptrdiff_t(sizeof(void*)));
    };
    return {slotOf(operations)...};
}

} // namespace

class ContractTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void operationsAreInTheirSlots()
    {
        QCOMPARE(slotsOf(&IAVManager::createNamedImporter, &IAVManager::createImporter,
                         &IAVManager::beginImport),
                 List({1, 2, 7}));
        QCOMPARE(slotsOf(&IAVImporter::descriptor, &IAVImporter::queryExtension,
                         &IAVImporter::movieCount, &IAVImporter::movieInfo,
                         &IAVImporter::openSource, &IAVImporter::close, &IAVImporter::release),
                 List({0, 1, 4, 5, 7, 9, 10}));
        QCOMPARE(slotsOf(&IMovieInfoExt::value), List({0}));
        QCOMPARE(slotsOf(&IDVDInfo::titleSetCount, &IDVDInfo::titleSet, &IDVDInfo::isDiscScrambled,
                         &IDVDInfo::isMainTitle),
                 List({0, 1, 2, 3}));
        QCOMPARE(slotsOf(&IBDLoader::titleList, &IBDLoader::chapters, &IBDLoader::titleInfo,
                         &IBDLoader::fileMovieInfo, &IBDLoader::open, &IBDLoader::fileList,
                         &IBDLoader::release, &IBDLoader::discInfo),
                 List({0, 1, 2, 5, 7, 8, 10, 11}));
        QCOMPARE(slotsOf(&IBDList::release, &IBDList::count, &IBDList::item), List({0, 1, 9}));
        QCOMPARE(slotsOf(&IBDListItem::name), List({0}));
        QCOMPARE(slotsOf(&IAVSource::seek, &IAVSource::readFrame, &IAVSource::release),
                 List({1, 6, 8}));
        QCOMPARE(slotsOf(&IImageConverter::convert, &IImageConverter::release), List({1, 2}));
        QCOMPARE(slotsOf(&IAVPicture::pixelFormat, &IAVPicture::dimensions, &IAVPicture::isTopDown,
                         &IAVPicture::plane),
                 List({0, 1, 4, 8}));
        QCOMPARE(slotsOf(&ISimpleEditTimeLine::saveToFile, &ISimpleEditTimeLine::applyFormat,
                         &ISimpleEditTimeLine::insertSource, &ISimpleEditTimeLine::reset,
                         &ISimpleEditTimeLine::selectItem),
                 List({1, 10, 12, 18, 35}));
    }
};

QTEST_GUILESS_MAIN(ContractTest)
#include "tst_contract.moc"
