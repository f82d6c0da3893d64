// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/config/cf_combo_box.h"
#include "ATarnLib/config/cf_line_edit.h"

#include <vector>

/// One control panel: which one it is, and which channels it drives.
/// Thread: that of the widgets.
class TARN_EXPORT CFControlPanelItem : public QWidget
{
    Q_OBJECT

public:
    /// \a panel_number counts from 0, as in the names of the items.
    CFControlPanelItem(CFModel *model, unsigned int panel_number, QWidget *parent = nullptr);

    QLineEdit *id_edit() const { return id; }
    QLineEdit *channels_edit() const { return channels; }
    void setHot(bool on);

private:
    QLineEdit *const id;
    QLineEdit *const channels;
    CFLineEdit *const id_binding;
    CFLineEdit *const channels_binding;
};

/// The control panels of a server: how many there are, and a row for each.
/// Thread: that of the widgets.
class TARN_EXPORT CFControlPanel : public QWidget
{
    Q_OBJECT

public:
    /// Rows that are shown at most, whatever the server says.
    static constexpr unsigned int most_panels = 64;

    explicit CFControlPanel(CFModel *model, QWidget *parent = nullptr);

    QComboBox *count_box() const { return count; }
    /// How many rows are shown.
    unsigned int panel_count() const { return shown; }
    /// The row of a panel that is shown; null for any other.
    CFControlPanelItem *panel(unsigned int number) const;
    /// Whether every change is sent at once, of rows to come too.
    void setHot(bool on);

private:
    void show_panels();
    void make_panel();

    CFModel *const cf_model;
    QComboBox *const count;
    CFComboBox *const count_binding;
    std::vector<CFControlPanelItem *> panels;
    unsigned int shown = 0;
    bool is_hot = false;
};
