#include "pc/downloaded_program.h"

#include "pc/handles_win.h"
#include "pc/shell_thread_win.h"
#include "pc/wide_text_win.h"

#include <QDir>

#include <shellapi.h>
#include <softpub.h>
#include <wincrypt.h>
#include <wintrust.h>

namespace downloaded_program {

namespace {

// Zone 3 is the internet.
QByteArray noteOf(const QString &from)
{
    return "[ZoneTransfer]\r\nZoneId=3\r\nHostUrl=" + from.toUtf8().simplified() + "\r\n";
}

void openFile(const QString &file)
{
    SHELLEXECUTEINFOW request = {};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_NOASYNC; // the thread ends, and soon the program
    request.lpVerb = L"open";
    request.lpFile = wide(file);
    request.nShow = SW_SHOWNORMAL;
    ShellExecuteExW(&request);
}

// The name in the certificate of who signed it; `state` is that of a good check.
QString signerIn(HANDLE state)
{
    CRYPT_PROVIDER_DATA *const data = WTHelperProvDataFromStateData(state);
    CRYPT_PROVIDER_SGNR *const signer =
        data ? WTHelperGetProvSignerFromChain(data, 0, FALSE, 0) : nullptr;
    CRYPT_PROVIDER_CERT *const certificate =
        signer ? WTHelperGetProvCertFromChain(signer, 0) : nullptr;
    if (!certificate)
        return {};
    wchar_t name[256] = {};
    const DWORD size = CertGetNameStringW(certificate->pCert, CERT_NAME_SIMPLE_DISPLAY_TYPE, 0,
                                          nullptr, name, 256);
    return size > 1 ? QString::fromWCharArray(name) : QString();
}

} // namespace

bool mark(const QString &path, const QString &from)
{
    const QString stream = QDir::toNativeSeparators(path) + QStringLiteral(":Zone.Identifier");
    const KernelHandle file(CreateFileW(wide(stream), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    const QByteArray note = noteOf(from);
    DWORD written = 0;
    return file &&
           WriteFile(file.get(), note.constData(), static_cast<DWORD>(note.size()), &written,
                     nullptr) != FALSE &&
           written == static_cast<DWORD>(note.size());
}

bool open(const QString &path)
{
    const QString file = QDir::toNativeSeparators(path);
    const KernelHandle held(CreateFileW(wide(file), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!held)
        return false;
    return shell_thread::run([&file] { openFile(file); });
}

QString signerOf(const QString &path)
{
    const QString name = QDir::toNativeSeparators(path);
    WINTRUST_FILE_INFO file = {};
    file.cbStruct = sizeof file;
    file.pcwszFilePath = wide(name);
    WINTRUST_DATA data = {};
    data.cbStruct = sizeof data;
    data.dwUIChoice = WTD_UI_NONE;
    data.fdwRevocationChecks = WTD_REVOKE_NONE;
    data.dwUnionChoice = WTD_CHOICE_FILE;
    data.pFile = &file;
    data.dwStateAction = WTD_STATEACTION_VERIFY;
    GUID action = WINTRUST_ACTION_GENERIC_VERIFY_V2;
    const auto nobody = static_cast<HWND>(INVALID_HANDLE_VALUE);
    const bool isValid = WinVerifyTrust(nobody, &action, &data) == ERROR_SUCCESS;
    const QString signer = isValid ? signerIn(data.hWVTStateData) : QString();
    data.dwStateAction = WTD_STATEACTION_CLOSE;
    WinVerifyTrust(nobody, &action, &data);
    return signer;
}

} // namespace downloaded_program
