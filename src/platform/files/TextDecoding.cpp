#include "platform/files/TextDecoding.h"

#include <QStringDecoder>

#include <cstdint>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <iconv.h>
#endif

namespace qvnd::files {

namespace {

QString decode(QStringConverter::Encoding encoding, const QByteArray& bytes) {
    return QStringDecoder(encoding).decode(bytes);
}

} // namespace

#ifdef Q_OS_WIN

QString decodeGbk(const QByteArray& bytes) {
    constexpr UINT gb18030 = 54936;
    const int size = static_cast<int>(bytes.size());
    std::wstring text(bytes.size(), L'\0');
    const int length = MultiByteToWideChar(gb18030, 0, bytes.constData(), size, text.data(), size);
    return QString::fromWCharArray(text.data(), length);
}

QByteArray encodeGbk(const QString& text) {
    constexpr UINT gb18030 = 54936;
    const std::wstring wide = text.toStdWString();
    const int size = static_cast<int>(wide.size());
    QByteArray bytes(text.size() * 4, Qt::Uninitialized);
    bytes.resize(WideCharToMultiByte(gb18030, 0, wide.data(), size, bytes.data(),
                                     static_cast<int>(bytes.size()), nullptr, nullptr));
    return bytes;
}

#else

QString decodeGbk(const QByteArray& bytes) {
    const iconv_t converter = iconv_open("UTF-8", "GB18030");
    if (reinterpret_cast<std::intptr_t>(converter) == -1) {
        return QString::fromLatin1(bytes);
    }
    QByteArray text;
    QByteArray input = bytes;
    char* at = input.data();
    std::size_t left = static_cast<std::size_t>(input.size());
    while (left > 0) {
        char block[4096];
        char* out = block;
        std::size_t room = sizeof block;
        iconv(converter, &at, &left, &out, &room);
        text.append(block, out - block);
        const bool isStuck = out == block;
        if (isStuck) {
            text.append("\xEF\xBF\xBD");
            ++at;
            --left;
        }
    }
    iconv_close(converter);
    return QString::fromUtf8(text);
}

QByteArray encodeGbk(const QString& text) {
    const iconv_t converter = iconv_open("GB18030", "UTF-8");
    if (reinterpret_cast<std::intptr_t>(converter) == -1) {
        return text.toLatin1();
    }
    QByteArray input = text.toUtf8();
    QByteArray bytes(input.size() * 4, Qt::Uninitialized);
    char* at = input.data();
    std::size_t left = static_cast<std::size_t>(input.size());
    char* out = bytes.data();
    std::size_t room = static_cast<std::size_t>(bytes.size());
    while (left > 0 && iconv(converter, &at, &left, &out, &room) == std::size_t(-1)) {
        *out++ = '?';
        --room;
        do { // the whole character
            ++at;
            --left;
        } while (left > 0 && (static_cast<unsigned char>(*at) & 0xC0) == 0x80);
    }
    iconv_close(converter);
    bytes.truncate(out - bytes.data());
    return bytes;
}

#endif

QString decodeText(const QByteArray& bytes) {
    if (bytes.startsWith("\xFF\xFE")) {
        return decode(QStringConverter::Utf16LE, bytes);
    }
    if (bytes.startsWith("\xFE\xFF")) {
        return decode(QStringConverter::Utf16BE, bytes);
    }
    QStringDecoder utf8(QStringConverter::Utf8);
    QString text = utf8.decode(bytes);
    return utf8.hasError() ? decodeGbk(bytes) : text;
}

} // namespace qvnd::files
