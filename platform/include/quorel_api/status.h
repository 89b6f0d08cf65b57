// Status codes of the platform's PHY accesses: the numbers of the SDK's return codes.
#pragma once

namespace Hardware::QuorelApi {

enum Status {
    statusOk = 0,
    statusParam = -4,     ///< an argument out of range, or a null pointer
    statusNotFound = -7,  ///< no such PHY
    statusFail = -11,     ///< the access itself failed
};

}  // namespace Hardware::QuorelApi
