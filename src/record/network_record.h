#pragma once

#include <QHash>
#include <QPoint>

#include "network/network.h"
#include "plan/plan_problem.h"
#include "record/order_demand.h"
#include "record/record.h"

namespace corvane::record {

// Fills the periods, machines, cutters, stores, orders, patterns and the network of the record from
// an import file that was read back and the roles in it. The mills come from the input files.
void fillNetwork(Record &record, const network::Network &network, const plan::PlanProblem &problem,
                 const QHash<QByteArray, QPoint> &places, const InputFacts &facts);

// The same of a file that holds patterns alone: the cutters come from the machine file. `places`
// names the nodes.
void fillPatternsOnly(Record &record, const network::Network &network,
                      const QHash<QByteArray, QPoint> &places, const InputFacts &facts);

}  // namespace corvane::record
