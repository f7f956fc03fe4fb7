// SPDX-License-Identifier: GPL-2.0-or-later
//
// What the module relies on in the framework's libraries: how they behave, and the places of the
// operations in the engine's interfaces. The engine knows an operation by its place alone, so that
// a declaration moved by one would call something else without a word.
#include "comparetext.h"
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
#include "vspbased/cbasicutils.h"
#include "vspbased/cvesklist.h"

#include <QtCore/QPointer>

#include <cstring>

using namespace AVBased;
using namespace Vesk;

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

    void textsForPeople()
    {
        QStringList sizes;
        const quint64 nearlyNext = 1024 * 1024 - 1; // rounds into the next unit
        for (const quint64 size : {quint64(0), quint64(1000), quint64(1536), quint64(1503238553),
                                   nearlyNext, ~quint64(0)})
            sizes << CBasicUtils::fileSizeToString(size);
        QCOMPARE(sizes.join(", "), "0 B, 1000 B, 1.5 KB, 1.4 GB, 1 MB, 16 EB");

        using Ratio = std::pair<unsigned, unsigned>;
        QStringList rates;
        for (const auto& [n, d] : {Ratio(24000, 1001), {30000, 1001}, {10, 1}, {0, 1}, {25, 0}})
            rates << CBasicUtils::framerateToString(quint64(n) << 32 | d);
        QCOMPARE(rates.join(", "), "23.976 fps, 29.97 fps, 10 fps, , ");

        QStringList ratios;
        for (const auto& [w, h] : {Ratio(16, 9), {427, 240}, {4, 3}, {12, 5}, {9, 16}, {0, 9}})
            ratios << CBasicUtils::aspectRatioToString(w << 16 | h);
        QCOMPARE(ratios.join(", "), "16:9, 16:9, 4:3, 2.40:1, 9:16, ");
    }

    void separators()
    {
        QStringList paths;
        for (const char* path : {"/a", "/a//", "/", ""}) {
            paths << CBasicUtils::includePathSeparator(path, true)
                  << CBasicUtils::excludePathSeparator(path, true);
        }
        QCOMPARE(paths.join(' '), "/a/ /a /a/ /a / /  ");
    }

    void listsOwnTheirItemsUnlessToldOtherwise()
    {
        for (const bool owner : {true, false}) {
            const QPointer<QObject> item(new QObject);
            {
                CVeskList list(nullptr);
                list.setOwner(owner);
                list.append(item);
                QCOMPARE(list.count(), 1);
                QCOMPARE(list.item(0), item.data());
                QVERIFY(!list.item(1) && !list.item(-1));
            }
            QCOMPARE(item.isNull(), owner);
            delete item;
        }
    }
};

QTEST_GUILESS_MAIN(ContractTest)
#include "tst_contract.moc"
