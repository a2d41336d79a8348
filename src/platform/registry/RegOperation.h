#pragma once

#include "platform/desktop/MessageBoxes.h"
#include "platform/registry/Registry.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <variant>

namespace qvnd::registry {

// A text handed over by reference, as every operation takes its texts: a caller's variable may be
// seen changed afterwards; a literal or an expression is changed unseen.
class ByReference {
public:
    ByReference(QString& variable) : text_(variable) {}
    ByReference(QString&& expression) : text_(expression) {}
    QString& operator*() const { return text_; }
    QString* operator->() const { return &text_; }

private:
    QString& text_;
};

// Reads and writes values by full key paths such as "HKEY_LOCAL_MACHINE\Software\...". Failures
// never throw: they are results ("Error", false), and the status stays to be worded. One object
// for one use.
//
// Every operation with a key path runs ParseKeyPath on it, so the caller's variable is left with
// the sub-key; its failure result (an empty text, or false) is the operation's. Operations named
// ...A open the key, do one thing and close it; those named ...Val work on the current key, which
// OpenKeyF or CreateKey has opened and the end of the object closes.
class RegOperation {
public:
    // A 32-bit number, or a text: "Error", or empty for a key path that is none.
    using Number = std::variant<std::int32_t, QString>;

    // The registry must outlive the object.
    explicit RegOperation(Registry& registry);
    ~RegOperation();
    RegOperation(const RegOperation&) = delete;
    RegOperation& operator=(const RegOperation&) = delete;

    // The value as text, or "Error" when the key or the value cannot be read (a key that was
    // opened for a missing value stays open). The value passes through a buffer of 255
    // characters: leading blanks are lost, a stored text without terminator loses its last
    // character, and a text of 255 characters or more is cut to 254.
    QString GetStringValueA(ByReference keyPath, const QString& valueName);

    // Makes folders, not keys: files::MakePath by another name. Errors as there.
    static std::uint8_t MCrDir(const QString& path, const QString& base);

    // Opens the key, making it if need be. With `close` it is closed again and the result tells
    // whether it could be opened; without, it stays as the current key and the result is false
    // whatever happened. The earlier current key is closed first.
    bool CreateKey(ByReference keyPath, bool close);
    // Mode "R" opens for reading, "W" for writing, anything else for both; the caller's text is
    // left in upper case. The earlier current key is closed first, also when opening fails.
    bool OpenKeyF(ByReference keyPath, ByReference mode);

    bool SetDWORDValueA(ByReference keyPath, const QString& valueName, std::int32_t value);
    bool SetDWORDVal(const QString& valueName, std::int32_t value);
    // Values of other kinds are read as what their first bytes make; "Error" for more than four.
    Number GetDWORDValueA(ByReference keyPath, const QString& valueName);

    // The bytes are the elements from index 1 on.
    bool SetBinaryValueA(ByReference keyPath, const QString& valueName, const QByteArray& bytes);
    bool SetBinaryVal(const QString& valueName, const QByteArray& bytes);
    // One character (U+0000 to U+00FF) for each byte, or "Error"; a text's bytes are those of the
    // local code page, terminator and all.
    QString GetBinaryValueA(ByReference keyPath, const QString& valueName);

    // True once the key itself could be opened, whatever the deletion did.
    bool DeleteKey(ByReference keyPath, const QString& subKey);

    // The text is stored without a terminator.
    bool SetStringValueA(ByReference keyPath, const QString& valueName, const QString& value);
    bool SetStringVal(const QString& valueName, const QString& value);

    bool DelReGval(const QString& valueName);
    bool DelRegValueA(ByReference keyPath, const QString& valueName);

    // Asks for the current key's protection; only the status is of use.
    void GetSecurityReg();

    // How the last call to the registry ended.
    Status LastStatus() const { return status_; }
    // The status in words, in English.
    static QString ErrorText(Status status);

    // Splits a key path at its first "\" into the root's handle and the sub-key, which takes the
    // path's place; a bare root name leaves an empty sub-key. False when the path does not begin
    // with "HKEY_" or ends in "\"; an unknown root succeeds with handle 0.
    static bool ParseKeyPath(QString& keyPath, RootHandle& root);

    // A diagnostic: shows in a box the values of a key (name and data, each ended by a carriage
    // return; text as it is, bytes and numbers as decimal bytes), the lines "abc", "bbb" and
    // "ccc", then a blank and the length of it all. Shows nothing for a key that cannot be opened.
    void DumpValues(ByReference keyPath, desktop::MessageBoxes& messages);

private:
    bool parse(QString& keyPath);
    bool open(const QString& subKey, Access access);
    bool closeWorking(Status result);
    void closeCurrent();
    bool set(KeyHandle key, const QString& valueName, const Value& value);
    bool setAt(QString& keyPath, const QString& valueName, const Value& value);

    Registry& registry_;
    KeyHandle current_ = 0;
    KeyHandle working_ = 0;
    RootHandle root_ = 0;
    Status status_ = 0;
};

} // namespace qvnd::registry
