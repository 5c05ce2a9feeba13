#pragma once

#define THE_HOSTS_OWN_EXPORT
