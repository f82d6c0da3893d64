// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPlainTextEdit>

/// What has happened, a line each: the last 1000.
class LogPage : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit LogPage(QWidget *parent);

public Q_SLOTS:
    /// Adds a line with the time of day.
    void note(QString const &text);
};
