// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

namespace Vesk {

class CDVDTrackPrivate;

/// One audio track of a DVD title: the seven values of the engine's entry in their order, carried
/// for the engine and not read by the module (their meanings are those of AVBased::DVDAudioInfo).
class CDVDTrack : public QObject
{
    Q_OBJECT

public:
    CDVDTrack(QObject* parent = 0);
    virtual ~CDVDTrack();

    QString text1() const;
    void setText1(QString text);
    QString text2() const;
    void setText2(QString text);
    QString text3() const;
    void setText3(QString text);

    int number1() const;
    void setNumber1(int number);
    int number2() const;
    void setNumber2(int number);
    int number3() const;
    void setNumber3(int number);
    int number4() const;
    void setNumber4(int number);

private:
    CDVDTrackPrivate* d;

    Q_DISABLE_COPY(CDVDTrack)
};

} // namespace Vesk
