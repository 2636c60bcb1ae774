#pragma once

class QWidget;

/// Gives each list of the form a label, spoken and not seen, with the list's accessible name,
/// unless the label whose buddy it is says the same. On desktops where a list's name is its chosen
/// entry, a screen reader learns from its labels alone what the list is for; the heading of a
/// column is the buddy of its first list only and does not tell the row.
void LabelLists(const QWidget& form);
