#include <cstdio>

#include "Broker/OvBrokerClient.h"

int main() { puts(OvBrokerClient().normalizeBrokerEndpointUrl("broker.example").front().c_str()); }
