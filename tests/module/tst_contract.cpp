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

/// The place of a virtual operation in its table: in the Itanium ABI the pointer to it holds the
/// offset in bytes plus one.
template <typename Operation>
int slotOf(Operation operation)
{
    std::ptrdiff_t value = 0;
    std::memcpy(&value, &operation, sizeof(value));
    return int((value - 1) / std::ptrdiff_t(sizeof(void*)));
}

} // namespace

class ContractTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void operationsAreInTheirSlots()
    {
        QCOMPARE(slotOf(&IAVManager::createNamedImporter), 1);
        QCOMPARE(slotOf(&IAVManager::createImporter), 2);
        QCOMPARE(slotOf(&IAVManager::beginImport), 7);

        QCOMPARE(slotOf(&IAVImporter::descriptor), 0);
        QCOMPARE(slotOf(&IAVImporter::queryExtension), 1);
        QCOMPARE(slotOf(&IAVImporter::movieCount), 4);
        QCOMPARE(slotOf(&IAVImporter::movieInfo), 5);
        QCOMPARE(slotOf(&IAVImporter::openSource), 7);
        QCOMPARE(slotOf(&IAVImporter::close), 9);
        QCOMPARE(slotOf(&IAVImporter::release), 10);

        QCOMPARE(slotOf(&IMovieInfoExt::value), 0);

        QCOMPARE(slotOf(&IDVDInfo::titleSetCount), 0);
        QCOMPARE(slotOf(&IDVDInfo::titleSet), 1);
        QCOMPARE(slotOf(&IDVDInfo::isDiscScrambled), 2);
        QCOMPARE(slotOf(&IDVDInfo::isMainTitle), 3);

        QCOMPARE(slotOf(&IBDLoader::titleList), 0);
        QCOMPARE(slotOf(&IBDLoader::chapters), 1);
        QCOMPARE(slotOf(&IBDLoader::titleInfo), 2);
        QCOMPARE(slotOf(&IBDLoader::fileMovieInfo), 5);
        QCOMPARE(slotOf(&IBDLoader::open), 7);
        QCOMPARE(slotOf(&IBDLoader::fileList), 8);
        QCOMPARE(slotOf(&IBDLoader::release), 10);
        QCOMPARE(slotOf(&IBDLoader::discInfo), 11);

        QCOMPARE(slotOf(&IBDList::release), 0);
        QCOMPARE(slotOf(&IBDList::count), 1);
        QCOMPARE(slotOf(&IBDList::item), 9);
        QCOMPARE(slotOf(&IBDListItem::name), 0);

        QCOMPARE(slotOf(&IAVSource::seek), 1);
        QCOMPARE(slotOf(&IAVSource::readFrame), 6);
        QCOMPARE(slotOf(&IAVSource::release), 8);

        QCOMPARE(slotOf(&IImageConverter::convert), 1);
        QCOMPARE(slotOf(&IImageConverter::release), 2);

        QCOMPARE(slotOf(&IAVPicture::pixelFormat), 0);
        QCOMPARE(slotOf(&IAVPicture::dimensions), 1);
        QCOMPARE(slotOf(&IAVPicture::isTopDown), 4);
        QCOMPARE(slotOf(&IAVPicture::plane), 8);

        QCOMPARE(slotOf(&ISimpleEditTimeLine::saveToFile), 1);
        QCOMPARE(slotOf(&ISimpleEditTimeLine::applyFormat), 10);
        QCOMPARE(slotOf(&ISimpleEditTimeLine::insertSource), 12);
        QCOMPARE(slotOf(&ISimpleEditTimeLine::reset), 18);
        QCOMPARE(slotOf(&ISimpleEditTimeLine::selectItem), 35);
    }
};

QTEST_GUILESS_MAIN(ContractTest)
#include "tst_contract.moc"
