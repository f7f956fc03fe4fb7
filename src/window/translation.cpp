// SPDX-License-Identifier: GPL-2.0-or-later
#include "translation.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>

namespace {

QString qtsFolder()
{
#if QT_VERSION_MAJOR < 6
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#endif
}

} // namespace

void installTranslations()
{
    const QLocale locale;
    const QString folder =
        QCoreApplication::applicationDirPath() + QLatin1String("/" VSPIMPORT_TRANSLATIONS);
    auto* ours = new QTranslator(QCoreApplication::instance());
    // Plural forms of English are a translation too.
    if (ours->load(locale, QStringLiteral("vspimport-window"), QStringLiteral("_"), folder) ||
        ours->load(QStringLiteral("vspimport-window_en"), folder))
        QCoreApplication::installTranslator(ours);
    auto* qts = new QTranslator(QCoreApplication::instance());
    if (qts->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"), qtsFolder()))
        QCoreApplication::installTranslator(qts);
}
