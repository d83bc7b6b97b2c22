#pragma once

// What every adapter of EventStore keeps. One file of a program includes this and instantiates EventStoreContract with
// the adapters' kinds and nameOf().

#include "tests/contracts/event_store_calendars_contract.h"
#include "tests/contracts/event_store_events_contract.h"
#include "tests/contracts/event_store_failures_contract.h"
#include "tests/contracts/event_store_foreign_contract.h"
#include "tests/contracts/event_store_reminders_contract.h"
#include "tests/contracts/event_store_rules_contract.h"
#include "tests/contracts/event_store_search_contract.h"
#include "tests/contracts/event_store_series_contract.h"
#include "tests/contracts/event_store_times_contract.h"
