// Whom an encrypted connection trusts. Native only: Wine's own TLS takes every certificate.
#include <gtest/gtest.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>

#include <atomic>
#include <memory>
#include <thread>

#include "platform/http.h"
#include "tests/platform/socket.h"

namespace hullrider {
namespace {

using Context = std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)>;

// A server's, with a certificate for the loopback address that nobody but itself has signed.
Context MakeSelfSigned() {
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(EVP_EC_gen("P-256"), EVP_PKEY_free);
    const std::unique_ptr<X509, decltype(&X509_free)> certificate(X509_new(), X509_free);
    X509_set_version(certificate.get(), 2);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 3600);
    X509_set_pubkey(certificate.get(), key.get());
    X509_NAME* const name = X509_get_subject_name(certificate.get());
    const auto* const address = reinterpret_cast<const unsigned char*>("127.0.0.1");
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, address, -1, -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    X509_sign(certificate.get(), key.get(), EVP_sha256());
    Context context(SSL_CTX_new(TLS_server_method()), SSL_CTX_free);
    SSL_CTX_use_certificate(context.get(), certificate.get());
    SSL_CTX_use_PrivateKey(context.get(), key.get());
    return context;
}

TEST(HttpTls, ACertificateThatNobodyVouchesForIsRefused) {
    const Socket listener = Socket::Listen();
    const Context context = MakeSelfSigned();
    std::atomic<bool> wasTrusted{false};
    std::thread server([&] {
        const std::optional<Socket> connection = listener.Accept();
        const std::unique_ptr<SSL, decltype(&SSL_free)> tls(SSL_new(context.get()), SSL_free);
        SSL_set_fd(tls.get(), static_cast<int>(connection->Handle()));
        char request[1];
        wasTrusted = SSL_accept(tls.get()) == 1 && SSL_read(tls.get(), request, sizeof request) == 1;
    });
    HttpRequest request;
    request.url = "https://127.0.0.1:" + std::to_string(listener.Port()) + "/";
    const HttpResponse response = MakeHttpFetch()(request, {});
    server.join();
    EXPECT_EQ(response.end, HttpEnd::kFailed);
    EXPECT_EQ(response.error, "SSL peer certificate or SSH remote key was not OK");
    EXPECT_FALSE(wasTrusted);
}

}  // namespace
}  // namespace hullrider
