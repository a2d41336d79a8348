#pragma once

#include <QStringList>
#include <QStringView>

#include <optional>
#include <string_view>

// How the store compares text: without case in every script that has case, and otherwise by code
// point. A full-width letter equals its own other case but not the half-width letter; no letter
// beyond ASCII equals an ASCII letter.
namespace qvnd::jet {

// Less than, equal to or greater than 0, on UTF-8 as the file holds it.
int compareText(std::string_view a, std::string_view b);

// The texts that equal `text`, each standing for those that differ from it in the case of ASCII
// letters alone; `text` is the first of them. Nothing when there are more than `atMost`.
std::optional<QStringList> spellings(const QString& text, qsizetype atMost);

// The position, from 1, at which `part` first stands in `text`; 0 when it does not. An empty part
// stands at 1, in an empty text nothing stands.
int positionOf(QStringView part, QStringView text);

// Are two names of tables, fields or indexes the same name?
inline bool sameName(QStringView a, QStringView b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace qvnd::jet
