// What happens when the host does not give a suite.
#include "AEGP_SuiteHandler.h"

void AEGP_SuiteHandler::MissingSuiteError() const {
    throw A_Err{PF_Err_BAD_CALLBACK_PARAM};
}
