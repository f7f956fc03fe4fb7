// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QObject>
#include <QtCore/QSharedData>
#include <QtCore/QString>

namespace Vesk {

class CDVDVideoPrivate;

/// Video attributes of a DVD title. An import leaves them at their defaults. Copies share one
/// record, as those of CMovieInfomation do.
class CDVDVideo : public QObject
{
    Q_OBJECT

public:
    CDVDVideo(QObject* parent = 0);
    CDVDVideo(const CDVDVideo& other);
    CDVDVideo& operator=(const CDVDVideo& other);
    virtual ~CDVDVideo();

    int number1() const;
    void setNumber1(int number);
    int number2() const;
    void setNumber2(int number);
    int number3() const;
    void setNumber3(int number);

    QString text1() const;
    void setText1(const QString& text);
    QString text2() const;
    void setText2(const QString& text);

    double real1() const;
    void setReal1(double real);

private:
    QExplicitlySharedDataPointer<CDVDVideoPrivate> d;
};

} // namespace Vesk
