// The base of the tests that talk with one stand-in cloud all the time.
#pragma once

#include "tests/cloud/cloud_peer.h"
#include "tests/support/test_case.h"

#include <memory>

class CloudTest : public TestCase
{
    Q_OBJECT

protected:
    std::unique_ptr<CloudPeer> cloud_;

protected slots:
    void initTestCase()
    {
        cloud_ = std::make_unique<CloudPeer>();
        QVERIFY(cloud_->isUp());
    }
    void cleanupTestCase() { cloud_.reset(); }
};
