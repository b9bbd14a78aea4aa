#include "support/boundary.h"
#include "sysprops/address_choice.h"
#include "vlrcomn/net_interface.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

int ISysProps::GetNetworkInformation(NetworkInformation& info) {
    return support::or_failure(0, [&] {
        std::string computer;
        info.wstrComputerName =
            getComputerName(computer) ? sysprops_ansi_to_wide(computer) : DefaultProp_Val;
        info.wstrDomainName = getDomainName();
        info.wstrIPHostName = getFqdnAddress();
        info.wstrIPXAddress = DefaultProp_Val;

        NetInterfaceList interfaces(false);
        if (getNetInterfacesList(interfaces) == 0) {
            return 0;
        }
        choose_address(interfaces, sysprops_wide_to_ansi(GetLastKnownLocalIP()), info);
        return 1;
    });
}

}  // namespace velora_com::qel::sysprops
