#include "quorel_api/internal_phy.h"

#include "quorel_api/status.h"

#include <map>
#include <mutex>
#include <tuple>

using namespace Hardware::QuorelApi;

namespace {

struct Registers {
    std::mutex mutex;
    std::map<std::tuple<int, int, int, unsigned int>, unsigned int> values;
};

Registers &registers()
{
    static Registers registers;
    return registers;
}

bool exists(int unit, int port, int lane)
{
    return unit >= 0 && unit <= 255 && port >= 0 && lane >= 0 && lane <= 7;
}

}  // namespace

int QuorelApiInternalPhyRead(int unit, int port, int lane, unsigned int addr, unsigned int *data)
{
    if (!exists(unit, port, lane) || !data) {
        return statusParam;
    }
    std::lock_guard<std::mutex> guard(registers().mutex);
    auto found = registers().values.find({unit, port, lane, addr});
    *data = found == registers().values.end() ? 0 : found->second;
    return statusOk;
}

int QuorelApiInternalPhyWrite(int unit, int port, int lane, unsigned int addr, unsigned int data)
{
    if (!exists(unit, port, lane)) {
        return statusParam;
    }
    std::lock_guard<std::mutex> guard(registers().mutex);
    registers().values[{unit, port, lane, addr}] = data;
    return statusOk;
}
