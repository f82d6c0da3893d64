// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/log_page.h"

#include <QDateTime>

LogPage::LogPage(QWidget *parent)
    : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setMaximumBlockCount(1000);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::ClickFocus);
    document()->setDocumentMargin(12);
}

void LogPage::note(QString const &text)
{
    appendPlainText(QDateTime::currentDateTime().toString(QStringLiteral("HH:mm:ss.zzz  ")) + text);
}
