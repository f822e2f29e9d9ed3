#include "tests/pc/test_signature_win.h"

#include <QFile>

#include <windows.h>

#include <wincrypt.h>

namespace test_signature {

bool isAvailable()
{
    const bool isWine = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version");
    return isWine && QFile::exists(signedProgram());
}

QString signedProgram()
{
    return QStringLiteral(KOLM_SIGNED "/signed.exe");
}

QString signer()
{
    return QStringLiteral("KOLM Test Signer");
}

Trusted::Trusted()
{
    QFile file(QStringLiteral(KOLM_SIGNED "/signer.der"));
    file.open(QIODevice::ReadOnly);
    const QByteArray encoded = file.readAll();
    const HCERTSTORE store = CertOpenSystemStoreW(0, L"ROOT");
    PCCERT_CONTEXT certificate = nullptr;
    CertAddEncodedCertificateToStore(
        store, X509_ASN_ENCODING, reinterpret_cast<const BYTE *>(encoded.constData()),
        static_cast<DWORD>(encoded.size()), CERT_STORE_ADD_REPLACE_EXISTING, &certificate);
    certificate_ = certificate;
    CertCloseStore(store, 0);
}

Trusted::~Trusted()
{
    const auto certificate = static_cast<PCCERT_CONTEXT>(certificate_);
    if (!certificate)
        return;
    const HCERTSTORE store = CertOpenSystemStoreW(0, L"ROOT");
    const PCCERT_CONTEXT kept = CertFindCertificateInStore(
        store, X509_ASN_ENCODING, 0, CERT_FIND_EXISTING, certificate, nullptr);
    if (kept)
        CertDeleteCertificateFromStore(kept);
    CertFreeCertificateContext(certificate);
    CertCloseStore(store, 0);
}

} // namespace test_signature
