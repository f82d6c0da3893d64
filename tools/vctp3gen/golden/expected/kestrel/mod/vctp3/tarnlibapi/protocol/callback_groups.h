// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from groups.tbl; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/afunction.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

#include <QObject>

namespace VCTP3 {

class CallbackGroupHelper;

// A group can serve several commands at a time, and can go while they are in flight: their
// answers are then dropped. Signals are emitted on the thread that reads the answers.

/// Turns the answers of stop, drive into signals.
class TARN_EXPORT CallbackGroup_set1 : public QObject
{
    Q_OBJECT

public:
    explicit CallbackGroup_set1(QObject *parent = nullptr);
    ~CallbackGroup_set1() override;

    /// One more command will answer to this group.
    void addref() const;
    void send_ok();
    void send_error(AString const &message, unsigned int code);

Q_SIGNALS:
    void sig_ok();
    void sig_error(AString const &message, unsigned int code);

private:
    friend class APIQt;
    CallbackGroupHelper *const helper;
    AFunction on_ok;
    AFunction2<AString, unsigned int> on_error;
};

/// Turns the answers of cars into signals.
class TARN_EXPORT CallbackGroup_set2 : public QObject
{
    Q_OBJECT

public:
    explicit CallbackGroup_set2(QObject *parent = nullptr);
    ~CallbackGroup_set2() override;

    /// One more command will answer to this group.
    void addref() const;
    void send_car(Car const &car);
    void send_ok();
    void send_error(AString const &message, unsigned int code);

Q_SIGNALS:
    void sig_car(Car const &car);
    void sig_ok();
    void sig_error(AString const &message, unsigned int code);

private:
    friend class APIQt;
    CallbackGroupHelper *const helper;
    AFunction1<Car> on_car;
    AFunction on_ok;
    AFunction2<AString, unsigned int> on_error;
};

/// Turns the answers of get_road into signals.
class TARN_EXPORT CallbackGroup_set3 : public QObject
{
    Q_OBJECT

public:
    explicit CallbackGroup_set3(QObject *parent = nullptr);
    ~CallbackGroup_set3() override;

    /// One more command will answer to this group.
    void addref() const;
    void send_road(Road const &road, unsigned long long serial);
    void send_error(AString const &message, unsigned int code);

Q_SIGNALS:
    void sig_road(Road const &road, unsigned long long serial);
    void sig_error(AString const &message, unsigned int code);

private:
    friend class APIQt;
    CallbackGroupHelper *const helper;
    AFunction2<Road, unsigned long long> on_road;
    AFunction2<AString, unsigned int> on_error;
};

} // namespace VCTP3
