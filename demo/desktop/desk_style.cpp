// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/desk_style.h"

#include <QApplication>
#include <QFormLayout>
#include <QLabel>
#include <QPalette>
#include <QStyleFactory>
#include <QVBoxLayout>

#include <algorithm>

namespace {

QPalette dark_palette()
{
    using namespace DeskStyle;
    QPalette palette;
    palette.setColor(QPalette::Window, back);
    palette.setColor(QPalette::Base, panel);
    palette.setColor(QPalette::AlternateBase, tile);
    palette.setColor(QPalette::Button, tile);
    palette.setColor(QPalette::ToolTipBase, tile);
    palette.setColor(QPalette::Highlight, accent.darker(170));
    palette.setColor(QPalette::Link, accent);
    palette.setColor(QPalette::Light, edge);
    palette.setColor(QPalette::Midlight, edge);
    palette.setColor(QPalette::Mid, edge);
    palette.setColor(QPalette::Dark, back.darker(130));
    palette.setColor(QPalette::Shadow, back.darker(160));
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
             QPalette::ToolTipText, QPalette::BrightText, QPalette::HighlightedText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, stale);
    }
    palette.setColor(QPalette::PlaceholderText, quiet);
    palette.setColor(QPalette::Disabled, QPalette::PlaceholderText, stale);
    return palette;
}

} // namespace

void DeskStyle::apply(QApplication *application)
{
    application->setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    application->setPalette(dark_palette());
    application->setFont(font(13));
}

QFont DeskStyle::font(int pixels, bool bold)
{
    // Its figures all have one width, so that a running timecode does not tremble.
    QFont result(QStringLiteral("DejaVu Sans"));
    result.setPixelSize(std::max(9, pixels));
    result.setBold(bold);
    return result;
}

QLabel *DeskStyle::label(QWidget *parent, char const *object_name, int pixels, bool bold)
{
    auto *result = new QLabel(parent);
    result->setObjectName(QLatin1String(object_name));
    result->setTextFormat(Qt::PlainText);
    result->setFont(font(pixels, bold));
    return result;
}

void DeskStyle::set_elided(QLabel *label, QString const &text, Qt::TextElideMode mode)
{
    label->setText(label->fontMetrics().elidedText(text, mode, label->width()));
    label->setToolTip(text);
}

void DeskStyle::set_text_colour(QWidget *widget, QColor const &colour)
{
    QPalette palette = widget->palette();
    for (auto group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::WindowText, colour);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, stale);
    widget->setPalette(palette);
}

QWidget *DeskStyle::panel_with(QWidget *parent, char const *title, QWidget *content)
{
    auto *frame = new QWidget(parent);
    frame->setAutoFillBackground(true);
    QPalette palette = frame->palette();
    palette.setColor(QPalette::Window, panel);
    frame->setPalette(palette);
    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(16, 12, 16, 12);
    column->setSpacing(14);
    QLabel *heading = label(frame, "heading", 15, true);
    heading->setText(QLatin1String(title));
    column->addWidget(heading);
    column->addWidget(content, 1);
    return frame;
}

QFormLayout *DeskStyle::form(QWidget *widget)
{
    auto *result = new QFormLayout(widget);
    result->setContentsMargins(0, 0, 0, 0);
    result->setHorizontalSpacing(24);
    result->setVerticalSpacing(10);
    return result;
}

QLabel *DeskStyle::row(QFormLayout *form, char const *title)
{
    QLabel *name = label(form->parentWidget(), "title");
    name->setText(QLatin1String(title));
    set_text_colour(name, quiet);
    QLabel *value = label(form->parentWidget(), title);
    form->addRow(name, value);
    return value;
}

QColor DeskStyle::status_colour(VCTP3::ChannelStatus status)
{
    switch (status) {
    case VCTP3::ChannelStatus::play:
        return green;
    case VCTP3::ChannelStatus::record:
    case VCTP3::ChannelStatus::insert:
        return red;
    case VCTP3::ChannelStatus::cueing:
    case VCTP3::ChannelStatus::timedelay:
        return amber;
    case VCTP3::ChannelStatus::stop:
        return accent;
    default:
        return quiet;
    }
}
