#pragma once

#include "support/ShopFixture.h"

namespace testsupport {

/// All screens of the program on the sample shop of one year, on March 2, 2026 at nine o'clock.
class SampleTest : public ShopTest {
  protected:
    explicit SampleTest(int jobs = 60) : m_jobs(jobs) {}
    void prepare() override;
    void TearDown() override;

  private:
    int m_jobs;
};

} // namespace testsupport
