#include "controller/server/network_watch.h"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

namespace qrn::controller {

std::optional<int> networkWatch() {
  const int watch = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE);
  const sockaddr_nl address{AF_NETLINK, 0, 0, RTMGRP_LINK | RTMGRP_IPV4_IFADDR | RTMGRP_IPV4_ROUTE};
  if (bind(watch, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
    return watch;
  close(watch);
  return std::nullopt;
}

}  // namespace qrn::controller
