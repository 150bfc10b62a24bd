#include "contracts/late_bound_contract.h"
#include "contracts/late_bound_subjects.h"

namespace contracts {
namespace {

INSTANTIATE_TEST_SUITE_P(Fake, LateBoundContract, testing::Values(LateBoundSubject{"fake", makeFakeHostObject}),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Fake, LateBoundErrorContract, testing::Values(LateBoundSubject{"fake", makeFakeHostObject}),
                         testing::PrintToStringParamName());

} // namespace
} // namespace contracts
