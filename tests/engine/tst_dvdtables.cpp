// SPDX-License-Identifier: GPL-2.0-or-later
//
// What is read from a DVD's tables, on invented ones: discs that cannot be authored here.
#include "dvd/maintitle.h"
#include "dvd/titlelayout.h"
#include "dvd/titleset.h"

#include <QtTest/QtTest>

using namespace engine;

namespace {

/// Writes a big-endian number; the bytes grow when it lies behind their end.
void put(Bytes& bytes, std::size_t offset, std::uint32_t value, std::size_t width)
{
    bytes.resize(qMax(bytes.size(), offset + width));
    for (std::size_t i = 0; i < width; ++i)
        bytes[offset + i] = std::uint8_t(value >> (8 * (width - 1 - i)));
}

/// A cell of so many seconds; `block` is the first byte of its description.
struct CellSketch
{
    int seconds;
    int block = 0;
};

/// Writes a program chain in which each of `programs` begins with that cell.
void putChain(Bytes& ifo, int offset, const QList<CellSketch>& cells, const QList<int>& programs)
{
    const int map = 236;
    const int playback = map + programs.size();
    const int position = playback + 24 * cells.size();
    put(ifo, offset + 2, programs.size(), 1);
    put(ifo, offset + 3, cells.size(), 1);
    put(ifo, offset + 230, map, 2);
    put(ifo, offset + 232, playback, 2);
    put(ifo, offset + 234, position, 2);
    for (int i = 0; i < programs.size(); ++i)
        put(ifo, offset + map + i, programs[i], 1);
    for (int i = 0; i < cells.size(); ++i) {
        put(ifo, offset + playback + 24 * i, cells[i].block, 1);
        put(ifo, offset + playback + 24 * i + 6, cells[i].seconds / 10 * 16 + cells[i].seconds % 10,
            1);
        put(ifo, offset + playback + 24 * i + 7, 0x40, 1);
        put(ifo, offset + position + 4 * i, 1, 2);
        put(ifo, offset + position + 4 * i + 3, i + 1, 1);
    }
}

/// A set of one title, whose chapters are given as chain and program, in two chains.
Bytes titleSetOf(const QList<QPair<int, int>>& chapters, const QList<CellSketch>& first,
                 const QList<CellSketch>& second)
{
    const int chapterTable = 2048;
    const int chainTable = 2 * 2048;
    Bytes ifo(3 * 2048);
    std::copy_n("DVDVIDEO-VTS", 12, ifo.begin());
    put(ifo, 0xC8, 1, 4);
    put(ifo, 0xCC, 2, 4);
    put(ifo, 0x200, 0x10, 1); // PAL
    put(ifo, chapterTable, 1, 2);
    put(ifo, chapterTable + 4, 12 + 4 * chapters.size() - 1, 4);
    put(ifo, chapterTable + 8, 12, 4);
    for (int i = 0; i < chapters.size(); ++i) {
        put(ifo, chapterTable + 12 + 4 * i, chapters[i].first, 2);
        put(ifo, chapterTable + 14 + 4 * i, chapters[i].second, 2);
    }
    put(ifo, chainTable, 2, 2);
    put(ifo, chainTable + 4, 2047, 4);
    put(ifo, chainTable + 12, 100, 4);
    put(ifo, chainTable + 20, 1000, 4);
    putChain(ifo, chainTable + 100, first, {1, 2});
    putChain(ifo, chainTable + 1000, second, {1});
    return ifo;
}

DvdTitle titleOf(std::initializer_list<std::pair<int, int>> cells)
{
    DvdTitle title;
    for (const auto& [number, seconds] : cells) {
        Cell cell;
        cell.cellId = number;
        cell.duration = seconds * ticksPerSecond;
        title.facts.cells.push_back(cell);
        title.facts.duration += cell.duration;
    }
    return title;
}

} // namespace

class DvdTablesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void times()
    {
        const auto expect = [](quint32 code, bool isNtsc, double seconds) {
            Bytes bytes;
            put(bytes, 0, code, 4);
            const auto time = parseTime(bytes, isNtsc);
            QVERIFY(qAbs((time ? inSeconds(*time) : -1.0) - seconds) < 0.001);
        };
        expect(0x01020364, false, 3723.96);
        // An hour of NTSC, as it is counted, lasts 3.6 s longer.
        expect(0x010000C0, true, 3603.6);
        expect(0x000319E5, true, 5995 * 1001 / 30000.0);
        // Without a rate.
        expect(0x00001000, true, 10.01);
        expect(0x00001000, false, 10.0);
        // No decimal number.
        expect(0x00A00040, false, -1.0);
    }

    void aTitlePlaysItsChainsAndOneAngle()
    {
        // The second chain has a block of three angles between two plain cells.
        const Bytes ifo = titleSetOf({{1, 1}, {1, 2}, {2, 1}}, {{10}, {20}},
                                     {{5}, {30, 0x50}, {30, 0x90}, {30, 0xD0}, {7}});
        IfoFindings findings("test");
        const auto set = parseTitleSet(ifo, findings);
        QVERIFY(set && set->titles.size() == 1);
        const Title& title = set->titles.front();
        QCOMPARE(inSeconds(title.duration), 72.0);
        QCOMPARE(title.cells.size(), std::size_t(5));
        QCOMPARE(title.chapterStarts,
                 (std::vector<Ticks>{0, 10 * ticksPerSecond, 30 * ticksPerSecond}));
    }

    /// And the title begins where its first chapter does.
    void chaptersThatLeadNowhereAreLeftOut()
    {
        const Bytes ifo = titleSetOf({{0, 1}, {1, 2}, {1, 0}, {1, 3}, {3, 1}, {0xFFFF, 0xFFFF}},
                                     {{10}, {20}}, {});
        IfoFindings findings("test");
        const auto set = parseTitleSet(ifo, findings);
        QVERIFY(set);
        QCOMPARE(set->titles.at(0).chapterStarts, std::vector<Ticks>{0});
        QCOMPARE(inSeconds(set->titles.at(0).duration), 20.0);
    }

    /// The cells 2 and 3 are angles of the same time, and lie in turns.
    void interleavedCellsAreReadInTheirPieces()
    {
        TitleSet set;
        set.cellAddresses = {{1, 1, 0, 99},    {1, 2, 100, 149}, {1, 2, 200, 249},
                             {1, 3, 150, 199}, {1, 3, 250, 299}, {1, 4, 300, 0xFFFFFFFF}};
        set.vobuSectors = {0, 50, 100, 130, 150, 200, 250, 300};
        Title title;
        for (const int id : {1, 2, 4}) {
            Cell cell;
            cell.vobId = 1;
            cell.cellId = id;
            cell.duration = ticksPerSecond;
            title.cells.push_back(cell);
        }
        const TitleLayout layout(set, title, 400);
        QStringList pieces;
        for (const TitleLayout::Piece& piece : layout.pieces())
            pieces << QString("%1+%2").arg(piece.sector).arg(piece.count);
        QCOMPARE(pieces, QStringList({"0+100", "100+50", "200+50", "300+100"}));
        std::vector<std::uint64_t> vobus;
        for (const TitleLayout::Vobu& vobu : layout.vobus())
            vobus.push_back(vobu.titleSector);
        QCOMPARE(vobus, (std::vector<std::uint64_t>{0, 50, 100, 130, 150, 200}));
        QCOMPARE(layout.cellAt(ticksPerSecond), std::size_t(1));
        QCOMPARE(layout.cellAt(100 * ticksPerSecond), std::size_t(2));
    }

    void findsTheMainTitle()
    {
        const auto mainOf = [](const std::vector<DvdTitle>& titles) {
            DvdDisc disc;
            // A set in front, whose cells have the same numbers but are others.
            disc.titleSets = {{1, true, {}, {titleOf({{1, 5}, {1, 5}})}}, {2, true, {}, titles}};
            const auto found = findMainTitle(disc);
            return found ? int(*found) - 1 : -2;
        };
        QCOMPARE(mainOf({titleOf({}), titleOf({{1, 0}})}), -1);
        QCOMPARE(mainOf({titleOf({{1, 10}}), titleOf({{2, 90}}), titleOf({{3, 50}})}), 1);
        QCOMPARE(mainOf({titleOf({{1, 10}}), titleOf({{2, 90}}), titleOf({{3, 90}})}), 1);
        // The film twice, and with a trailer between.
        QCOMPARE(
            mainOf({titleOf({{1, 45}, {2, 45}, {1, 45}, {2, 45}}), titleOf({{1, 45}, {2, 45}})}),
            1);
        QCOMPARE(
            mainOf({titleOf({{1, 90}, {3, 2}, {1, 90}}), titleOf({{1, 90}}), titleOf({{3, 2}})}),
            1);
        // A part of the film, and all episodes.
        QCOMPARE(mainOf({titleOf({{2, 45}}), titleOf({{1, 45}, {2, 45}})}), 1);
        QCOMPARE(mainOf({titleOf({{1, 40}}), titleOf({{2, 40}}), titleOf({{1, 40}, {2, 40}})}), 2);
        // A logo shown twice in the film.
        QCOMPARE(mainOf({titleOf({{1, 1}}), titleOf({{1, 1}, {2, 90}, {1, 1}})}), 1);
    }
};

QTEST_GUILESS_MAIN(DvdTablesTest)
#include "tst_dvdtables.moc"
