#pragma once

#include "store/OutlineFolders.h"

#include <QString>

// The files of the documents: each lies in its outline's folder and bears the document's key.
//
// Keys come from databases that others may have written. Each function answers a path inside the
// folder that it names, or raises error 76: for a key that is not the outline's name with numbers
// behind it, and for a name that is no plain one (store/OutlineFolders.h).
namespace qvnd::outline {

// planFolder + "/" + key + ".doc". The key may belong to an outline of another name.
QString documentPath(const modMain& state, const QString& plan, const QString& key);

// templateFolder + "/" + key + ".doc". The key may belong to an outline of another name.
QString templateDocumentPath(const modMain& state, const QString& name, const QString& key);

} // namespace qvnd::outline
