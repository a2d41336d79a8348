#pragma once

#include "format/controls/ChoiceControls.h"
#include "format/controls/TextControls.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/jet/Database.h"

#include <functional>
#include <memory>

// What the pages of the dialog share in reading and writing the rows of their tables.
namespace qvnd::format {

// "是" or "否".
QString yesNo(const CheckBox& box);
// The text as it is stored: without the blanks at both ends.
QString stored(const TextBox& box);
QString stored(const ComboBox& box);

// The three options of an alignment.
struct PositionOptions {
    OptionButton& left;
    OptionButton& middle;
    OptionButton& right;
};
// Selects the option of "左", "中" or "右"; any other word selects none.
void showPosition(const QString& word, const PositionOptions& options);
// Sets the field to the word of the selected option; with none selected it stays as it is.
void setPosition(jet::Recordset& row, QStringView field, const PositionOptions& options);

// Whether the field holds "是"; Null does not.
bool isYes(const jet::Recordset& row, QStringView field);
// The field's text; Null is the empty text.
QString textOf(const jet::Recordset& row, QStringView field);
// Whether the field holds more than blanks.
bool holdsText(const jet::Recordset& row, QStringView field);

// How a filling of controls meets a statement that fails: the load of the dialog passes it over and
// goes on with the next, everything else lets the error pass.
enum class Failing { passedOver, raised };

// Runs the statements of one filling, each by itself.
class Statements {
public:
    explicit Statements(Failing failing) : failing_(failing) {}

    template <class Statement>
    void operator()(Statement statement) const {
        if (failing_ == Failing::passedOver) {
            ignoringErrors(statement);
        } else {
            statement();
        }
    }

private:
    Failing failing_;
};

using UseRow = std::function<void(jet::Recordset& row)>;

// The load of the dialog: opens the query and hands on its first row; `fallBack` stands in for a
// row that is missing. A query that fails does neither.
void loadRow(jet::Database& database, const QString& query, const UseRow& show,
             const std::function<void()>& fallBack);

// Opens the query and lets `edit` set fields of its first row, or `create` those of a new one when
// there is none. Errors of the store pass; the row is then as it was.
void writeRow(jet::Database& database, const QString& query, const UseRow& edit,
              const UseRow& create);

} // namespace qvnd::format
