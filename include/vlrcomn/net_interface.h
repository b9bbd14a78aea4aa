/**
 * @file
 * @brief The machine's network interfaces that are up, with their addresses.
 *
 * A NetInterfaceList is filled from one snapshot of the system's address list and then searched.
 * Every address is held as text: IPv4 in dotted decimal, IPv6 in the form that expandIPV6Address
 * makes (all eight groups, no scope suffix), so that two addresses are compared as texts.
 *
 * Nothing here writes a log or throws, with one exception: copying a record happens in the caller's
 * own code and may throw `std::bad_alloc` there like the copy of any string.
 *
 * Thread safety: distinct objects may be used by distinct threads at once. One object may be read by
 * several threads as long as nobody changes or fills it.
 *
 * Cancellation: initialize() and getMacAddr() disable the thread's cancellation until they are done.
 */
#ifndef VLRCOMN_NET_INTERFACE_H
#define VLRCOMN_NET_INTERFACE_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "vlrcomn/types.h"

struct sockaddr;

namespace velora_com::qel {

/** @addtogroup network
 * @{ */

class NetInterfaceList;

/** The field that IPAddress::setOption sets. */
enum IP_PARAM {
    IP_ADDRESS = 0,    /**< numeric text of the address; a text */
    IP_FAMILY = 1,     /**< socket address family; a number */
    IP_SUBNETMASK = 2, /**< numeric text of the mask; a text */
    IP_SUBNETADDR = 3  /**< numeric text of the subnet's address; a text */
};

/**
 * One address of an interface. A new one holds three empty texts and the family 0; copies copy all
 * four fields.
 *
 * The getters return copies; one that cannot be allocated comes back empty.
 */
class VLRCOMN_API IPAddress {
public:
    /**
     * Sets a text field.
     * @param param  IP_ADDRESS, IP_SUBNETMASK or IP_SUBNETADDR; anything else changes nothing
     * @param value  the text, taken as it is
     */
    void setOption(IP_PARAM param, std::string value);

    /**
     * Sets the family.
     * @param param  IP_FAMILY; anything else changes nothing
     * @param value  the host's AF_INET or AF_INET6
     */
    void setOption(IP_PARAM param, unsigned int value);

    /** The address. @return dotted decimal, or IPv6 with all groups and without scope */
    std::string getIPAddress() const;
    /** The mask. @return in the form of the address */
    std::string getSubNetMask() const;
    /**
     * The subnet.
     * @return address AND mask: dotted decimal, or IPv6 as calculateSubNetAddrForV6 makes it
     */
    std::string getSubNetAddr() const;
    /** The family. @return the host's AF_INET or AF_INET6; 0 when unset */
    unsigned int getIPFamily() const;

private:
    friend class NetInterfaceList;

    std::string address_;
    std::string subnet_mask_;
    std::string subnet_address_;
    uint32_t family_ = 0;
};

/** The field that NetInterface::setOption sets. */
enum NETINTERFACE_PARAM {
    NETINTERFACE_MACADDRESS = 0, /**< hardware address; a text */
    NETINTERFACE_INDEXNAME = 1,  /**< name of the interface; a text */
    NETINTERFACE_INDEX = 2,      /**< index of the interface; a number */
    NETINTERFACE_IPADDRESS = 3   /**< one more address */
};

/**
 * One interface. A new one has the index 0, empty texts and no address; copies copy everything.
 *
 * The getters return copies; one that cannot be allocated comes back empty.
 */
class VLRCOMN_API NetInterface {
public:
    /**
     * Sets a text field.
     * @param param  NETINTERFACE_MACADDRESS or NETINTERFACE_INDEXNAME; anything else changes
     * nothing
     * @param value  the text, taken as it is
     */
    void setOption(NETINTERFACE_PARAM param, std::string value);

    /**
     * Sets the index.
     * @param param  NETINTERFACE_INDEX; anything else changes nothing
     * @param value  the index
     */
    void setOption(NETINTERFACE_PARAM param, unsigned int value);

    /**
     * Appends a copy of an address; it never replaces one. Without memory for it nothing is
     * appended.
     * @param param  NETINTERFACE_IPADDRESS; anything else changes nothing
     * @param value  the address
     */
    void setOption(NETINTERFACE_PARAM param, const IPAddress& value);

    /** The hardware address. @return 12 lower-case hexadecimal digits; zeros where there is none */
    std::string getMACAddress() const;
    /** The name. @return for example "en0" */
    std::string getIndexName() const;
    /** The index. @return as if_nametoindex gives it; 0 when unset */
    unsigned int getIndex() const;
    /** The addresses. @return them, in the order in which the system listed them */
    std::vector<IPAddress> getIPAddress() const;

private:
    friend class NetInterfaceList;
    friend VLRCOMN_API int getMACAddressFromIPAddress(std::string& mac, const std::string& ip,
                                                      NetInterfaceList& list);

    uint32_t index_ = 0;
    std::string mac_address_;
    std::string index_name_;
    std::vector<IPAddress> addresses_;
};

/** A table of interfaces, ascending by index. */
class VLRCOMN_API NetInterfaceList {
public:
    /**
     * Makes an empty table.
     * @param includeLoopback  whether initialize() takes loopback interfaces too
     */
    explicit NetInterfaceList(bool includeLoopback);

    /**
     * Adds the addresses that the system lists now, from one snapshot.
     *
     * An address gets in when its interface is up, has an index and a link-layer entry of the same
     * name, is not a loopback one (unless asked for), and when the address is IPv4 or IPv6, has a
     * mask, and the system can open a datagram socket of its family. What fails any of this is left
     * out silently, and so is an interface that vanishes meanwhile. An interface appears once it
     * has an address. One without a link-layer address, as VPNs have, has an entry of no bytes: its
     * hardware address reads zeros. On Linux an IPv4 address with a label of its own ("eth0:1") has
     * no link-layer entry of that name and is therefore left out.
     *
     * One free descriptor is enough.
     *
     * The table is not cleared first: a second call adds every address a second time. The cost
     * grows linearly with the number of addresses.
     *
     * @return 1 when at least one address was added; 0 when there was none, when the system could
     * not be asked, or when memory ran out, in which case the table is as it was before
     */
    int initialize();

    /** The indexes. @return all of them, ascending; empty when memory runs out */
    std::vector<unsigned int> getIndexes() const;

    /**
     * Copies an entry.
     * @param index  the interface's index
     * @param[out] out  the copy; left alone when the result is 0
     * @return 1 when there is such an entry, else 0 (also when memory runs out)
     */
    int getNetInterface(unsigned int index, NetInterface& out) const;

    /**
     * The entry itself. An index that the table does not hold is added first, with an entry that is
     * empty and whose own index is 0.
     *
     * @param index  the interface's index
     * @return the entry; valid until the table is filled again, copied over or destroyed. When
     * memory for a new entry runs out: an empty spare that is not part of the table
     */
    NetInterface& getNetInterface(const unsigned int& index);

private:
    friend VLRCOMN_API int getNetInterfaceFromIPAddress(NetInterface& out, const std::string& ip,
                                                        NetInterfaceList& list);
    friend VLRCOMN_API int getMACAddressFromIPAddress(std::string& mac, const std::string& ip,
                                                      NetInterfaceList& list);

    const NetInterface* find_address(const std::string& ip) const;

    std::map<uint32_t, NetInterface> interfaces_;
    bool include_loopback_;
    NetInterface spare_;
};

/**
 * Fills a table; the same as calling NetInterfaceList::initialize.
 * @param list  the table
 * @return 1 when at least one address was added, else 0
 */
VLRCOMN_API int getNetInterfacesList(NetInterfaceList& list);

/**
 * Finds the interface that has an address. The table is searched as it is: fill it first.
 *
 * @param[out] out  a copy of the interface; left alone when nothing is found
 * @param ip  the address, compared as text and byte by byte: an IPv6 address has to be in the
 * expanded form ("fe80:0:0:0:0:0:0:1" is found, "fe80::1" is not)
 * @param list  the table, searched ascending by index
 * @return 1 found, 0 not found or out of memory
 */
VLRCOMN_API int getNetInterfaceFromIPAddress(NetInterface& out, const std::string& ip,
                                             NetInterfaceList& list);

/**
 * Finds the hardware address of the interface that has an address; the search is that of
 * getNetInterfaceFromIPAddress.
 *
 * @param[out] mac  12 lower-case hexadecimal digits; left alone when nothing is found
 * @param ip  the address, IPv6 in the expanded form
 * @param list  the table
 * @return 1 found, 0 not found or out of memory
 */
VLRCOMN_API int getMACAddressFromIPAddress(std::string& mac, const std::string& ip,
                                           NetInterfaceList& list);

/**
 * Writes a hardware address as text.
 * @param bytes  six bytes, or null
 * @return 12 lower-case hexadecimal digits without separators ("001b63a40f9c"); empty for null
 */
VLRCOMN_API std::string formatMACAddress(unsigned char* bytes);

/**
 * The hardware address of an interface by name, from a snapshot of its own. Takes the first
 * link-layer entry of that name, whether the interface is up or not.
 *
 * @param[out] mac  always six bytes as 12 lower-case hexadecimal digits: a shorter address, also of
 * no bytes, is filled up with zeros, of a longer one the first six are taken; left alone on failure
 * @param interfaceName  for example "en0"
 * @return 1 found; 0 when there is no such entry, the system could not be asked or memory ran out
 */
VLRCOMN_API int getMacAddr(std::string& mac, const std::string& interfaceName);

/**
 * Writes a network mask as text, for IPv6 in the short form ("ffff:ffff::").
 *
 * @param family  the family of the address that the mask belongs to (AF_INET, AF_INET6); it stands
 * in when the mask itself states none, as masks from the system may do, and does not count else
 * @param mask  the mask as getifaddrs gives it: it may be shorter than its family's structure where
 * the system states a length, in which case the missing bytes are 0. It is not changed. Null fails
 * @param[out] out  the text; left alone on failure
 * @return 1 on success, else 0
 */
VLRCOMN_API int getNetMask(const unsigned int& family, sockaddr* mask, std::string& out);

/**
 * Writes the subnet's address, which is address AND mask, for IPv4.
 *
 * @param family  AF_INET, or anything else, for which the text is "N/A"
 * @param mask  the mask as getifaddrs gives it; null fails
 * @param addr  the address; null fails
 * @param[out] out  dotted decimal, or "N/A"; left alone on failure
 * @return 1 on success, else 0
 */
VLRCOMN_API int getNetAddr(const unsigned int& family, sockaddr* mask, sockaddr* addr,
                           std::string& out);

/** @} */

}  // namespace velora_com::qel

#endif
