#pragma once

class QComboBox;
class QLineEdit;

/// Makes an entry box refuse, as they are typed or pasted, characters that the code page lacks and
/// control characters, which would break the fields of the files.
void AcceptCodePageOnly(QLineEdit& box);
void AcceptCodePageOnly(QComboBox& editableBox);

/// The same, and refuses the semicolon too, which parts a stored field in two.
void AcceptFieldTextOnly(QLineEdit& box);
void AcceptFieldTextOnly(QComboBox& editableBox);
