#include "platform/desktop/UserName.h"

#ifdef Q_OS_WIN
#include <windows.h>

#include <array>
#else
#include <pwd.h>
#include <unistd.h>
#endif

namespace qvnd::desktop {

#ifdef Q_OS_WIN
QString userName() {
    std::array<wchar_t, 256> buffer{};
    DWORD length = buffer.size();
    return GetUserNameW(buffer.data(), &length) ? QString::fromWCharArray(buffer.data())
                                                : QString();
}
#else
QString userName() {
    const passwd* account = getpwuid(getuid());
    return account ? QString::fromLocal8Bit(account->pw_name) : QString();
}
#endif

} // namespace qvnd::desktop
