#include "Broker/OvBrokerClient.h"

#include <cstdio>

int main() { puts(OvBrokerClient().normalizeBrokerEndpointUrl("broker.example").front().c_str()); }
