// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/helpersecretstore.h"

#include <gtest/gtest.h>

namespace velto::platform
{
namespace
{

using base::KeychainError;

const QString service = QStringLiteral("ltd.orbax.velto");
const QString account = QStringLiteral("refresh_token");

/// Beside no Secret Service, and beside no bus.
class SecretStoreAbsent : public testing::Test
{
protected:
    void SetUp() override
    {
        const QByteArray keyring = qgetenv("VELTO_TEST_KEYRING");
        ASSERT_TRUE(keyring == "no-service" || keyring == "no-bus") << "run through ctest";
    }

    std::unique_ptr<SecretStore> store =
        std::make_unique<HelperSecretStore>(QStringLiteral(VELTO_KEYRING_HELPER));
};

TEST_F(SecretStoreAbsent, savingSaysThatNobodyAnswers)
{
    const auto saved = store->save(service, account, QStringLiteral("token"));
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error(), base::Failure(KeychainError{KeychainError::NoService}));
    EXPECT_TRUE(base::description(saved.error()).contains(u"keyring"));
}

TEST_F(SecretStoreAbsent, loadingIsAFailureAndNotAMissingEntry)
{
    const auto loaded = store->load(service, account);
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error(), base::Failure(KeychainError{KeychainError::NoService}));
}

TEST_F(SecretStoreAbsent, removingSaysThatNobodyAnswers)
{
    const auto removed = store->remove(service, account);
    ASSERT_FALSE(removed);
    EXPECT_EQ(removed.error(), base::Failure(KeychainError{KeychainError::NoService}));
}

} // namespace
} // namespace velto::platform
