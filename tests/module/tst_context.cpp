// SPDX-License-Identifier: GPL-2.0-or-later
//
// The settings of all imports.
#include "cimportcontext.h"
#include "fakeengine.h"

#include <QtTest/QtTest>

using Vesk::CImportContext;

class ContextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithDefaults();
    void formatsLeaveTheOtherList_data();
    void formatsLeaveTheOtherList();
    void theConverterKeepsItsFirstSize();
};

void ContextTest::startsWithDefaults()
{
    const CImportContext* context = CImportContext::instance();
    QCOMPARE(context->snapSize(), QSize(50, 50));
    QVERIFY(context->configDir().isEmpty());
    QVERIFY(context->fileFormats().isEmpty());
    QVERIFY(context->forbidFormats().isEmpty());
    QVERIFY(context->limitFileFormat());
    QVERIFY(!context->dvdSupport() && !context->dvdSupportScrambled());
    QVERIFY(!context->bdSupport() && !context->bdSupportScrambled());
    QVERIFY(!context->drmSupport());
}

void ContextTest::formatsLeaveTheOtherList_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("other");
    QTest::addColumn<QString>("added");
    QTest::addColumn<QString>("listAfter");
    QTest::addColumn<QString>("otherAfter");

    QTest::newRow("new") << "*.avi;"
                         << ""
                         << "*.mkv;"
                         << "*.avi;*.mkv;"
                         << "";
    QTest::newRow("there in other case") << "*.MP4;"
                                         << "*.avi;*.Mp4;"
                                         << "*.mp4;"
                                         << "*.MP4;"
                                         << "*.avi;";
    QTest::newRow("part of another") << "*.mp4;"
                                     << ""
                                     << "*.mp"
                                     << "*.mp4;"
                                     << "";
    QTest::newRow("twice in the other") << ""
                                        << "*.avi;*.AVI;*.mkv;"
                                        << "*.avi;"
                                        << "*.avi;"
                                        << "*.mkv;";
}

void ContextTest::formatsLeaveTheOtherList()
{
    QFETCH(QString, list);
    QFETCH(QString, other);
    QFETCH(QString, added);
    CImportContext* context = CImportContext::instance();

    context->setFileFormats(list);
    context->setForbidFormats(other);
    context->addFileFormat(added);
    QTEST(context->fileFormats(), "listAfter");
    QTEST(context->forbidFormats(), "otherAfter");

    context->setForbidFormats(list);
    context->setFileFormats(other);
    context->addForbidFormat(added);
    QTEST(context->forbidFormats(), "listAfter");
    QTEST(context->fileFormats(), "otherAfter");
}

void ContextTest::theConverterKeepsItsFirstSize()
{
    FakeEngine& engine = FakeEngine::instance();
    engine.reset();
    CImportContext* context = CImportContext::instance();
    context->setSnapSize(QSize(40, 30));

    engine.hasConverter = false;
    QVERIFY(!context->imageConvert());
    engine.hasConverter = true;
    AVBased::IImageConverter* converter = context->imageConvert();
    QVERIFY(converter);
    context->setSnapSize(QSize(80, 60));
    QCOMPARE(context->imageConvert(), converter);
    QCOMPARE(context->snapSize(), QSize(80, 60));
    QCOMPARE(engine.calls(),
             QStringList({"createConverter 30 40 30 0", "createConverter 30 40 30 0"}));
}

QTEST_GUILESS_MAIN(ContextTest)
#include "tst_context.moc"
