#pragma once

#include "record/record.h"

namespace corvane::record {

// A run of one machine with two grades in two periods, small enough to reckon by hand.
//
//   Grade A on a deckle of 100: 2 x 40 + 20 trims 0; 3 x 30 trims 10; 1 x 40 trims 60 and is
//   unused. Grade B on a deckle of 90: 2 x 44 trims 2. Ordered: A 40: 20 and 10 rolls, A 20: 15, A
//   30: 9, B 44: 8 and 4, in inches 2298. The plan cuts 10 + 5 of the first, 3 of the second, 4
//   + 1.5 of the last: 2295 inches, trim 41, surplus of one roll 44 in the second period; of B 44 2
//   rolls are short.
inline Record exampleRecord() {
  Record record;
  record.version = QStringLiteral("1.0.0");
  record.name = QStringLiteral("small_mill");
  record.log = {QStringLiteral("2026/11/21 14:03:22"),
                QStringLiteral("2026/11/21 14:03:23"),
                true,
                7,
                2298.0,
                12,
                {QStringLiteral("Deckle Width: 100.000, Demand Width: 20.000 is in 1 patterns.")}};
  record.parameters = {
      {QStringLiteral("occur min"), QStringLiteral("2"), QStringLiteral("file")},
      {QStringLiteral("batch"), QStringLiteral("False"), QStringLiteral("default")}};
  record.files = {
      {QStringLiteral("orders"), QStringLiteral("data\\orders.data"), true, 120,
       QString(64, QLatin1Char('a'))},
      {QStringLiteral("machines"), QStringLiteral("data\\machines.data"), false, 0, {}}};
  record.periods = {QStringLiteral("1"), QStringLiteral("2")};
  record.daysPerPeriod = 7;
  record.machines = {{QStringLiteral("W1"), QStringLiteral("Alder")}};
  record.cutters = {{QStringLiteral("A_W1_100"), 0, QStringLiteral("A"), 100, 10, 2},
                    {QStringLiteral("B_W1_90"), 0, QStringLiteral("B"), 90, 5, 4}};
  record.stores = {{QStringLiteral("A_W1_40.000"), 0, 40},
                   {QStringLiteral("A_W1_30.000"), 0, 30},
                   {QStringLiteral("A_W1_20.000"), 0, 20},
                   {QStringLiteral("B_W1_44.000"), 1, 44}};
  const QString zed = QStringLiteral("Zed <& Sons>");
  record.orders = {
      {QStringLiteral("A_Zed_40"), QStringLiteral("A"), zed, 40, {20, 10}},
      {QStringLiteral("A_Zed_20"), QStringLiteral("A"), zed, 20, {15, 0}},
      {QStringLiteral("A_Yew_30"), QStringLiteral("A"), QStringLiteral("Yew"), 30, {9, 0}},
      {QStringLiteral("B_Yew_44"), QStringLiteral("B"), QStringLiteral("Yew"), 44, {8, 4}}};
  record.seen = {{QStringLiteral("A"), 40, {20, 10}},
                 {QStringLiteral("A"), 30, {9, 0}},
                 {QStringLiteral("A"), 20, {15, 0}},
                 {QStringLiteral("B"), 44, {2, 4}}};
  record.patterns = {{QStringLiteral("A_Pattern_0_W1_100"), 0, {{40, 2}, {20, 1}}, 0},
                     {QStringLiteral("A_Pattern_1_W1_100"), 0, {{30, 3}}, 10},
                     {QStringLiteral("A_Pattern_2_W1_100"), 0, {{40, 1}}, 60},
                     {QStringLiteral("B_Pattern_0_W1_90"), 1, {{44, 2}}, 2}};
  record.network.groups = {{QStringLiteral("machine"), {}, {10, 0}},
                           {QStringLiteral("cutter"), {}, {180, 0, 180, 10}},
                           {QStringLiteral("pattern"), {}, {420, 0, 420, 20, 420, 40, 420, 60}},
                           {QStringLiteral("store"), {}, {710, 0, 710, 20, 710, 40, 710, 60}},
                           {QStringLiteral("order"), {}, {1200, 0, 1200, 0, 1200, 0, 1200, 0}},
                           {QStringLiteral("waste"),
                            {QStringLiteral("A_Waste"), QStringLiteral("B_Waste")},
                            {710, 80, 710, 100}}};
  record.network.arcs = {{0, 1, 2},   {1, 3, 4, 5}, {2, 6},  {3, 7, 9, 15}, {4, 8, 15}, {5, 7, 15},
                         {6, 10, 16}, {7, 11},      {8, 13}, {9, 12},       {10, 14}};
  record.wereInputsChecked = true;
  record.findings = {{QStringLiteral("CV402"), QStringLiteral("warning"),
                      QStringLiteral("orders.data"), 3,
                      QStringLiteral("two demands of B 44 in period 1")}};
  Plan plan;
  plan.cost = {{QStringLiteral("feed"), 235},
               {QStringLiteral("waste"), 104},
               {QStringLiteral("freight"), 500},
               {QStringLiteral("surplus"), 176}};
  plan.totalCost = 1015;
  plan.boundCost = 1015;
  plan.paperBounds = {{QStringLiteral("A"), 1770}, {QStringLiteral("B"), 450}};
  plan.modes = {QStringLiteral("Truck")};
  plan.reels = {{0, 0, 10}, {0, 1, 5}, {1, 0, 3}, {3, 0, 4}, {3, 1, 1.5}};
  plan.machineTime = {{0, 0, 7, 7}, {0, 1, 0.8, 7}};
  plan.deliveries = {
      {0, 0, 20, 0, {}}, {0, 1, 10, 0, {}},
      {1, 0, 15, 0, {}}, {2, 0, 9, 0, {}},
      {3, 0, 8, 0, {}},  {3, 1, 2, 2, QStringLiteral("machine W1 is full in period 2")}};
  plan.shipments = {{0, 0, 0, 0, 0, 20, 200}, {0, 0, 0, 1, 1, 10, 100}, {0, 2, 1, 0, 0, 15, 60},
                    {0, 1, 2, 0, 0, 9, 40},   {0, 3, 3, 0, 0, 8, 80},   {0, 3, 3, 1, 1, 2, 20}};
  plan.surplus = {{3, 1, 1}};
  plan.flows = {{0, 1, 1800}, {0, 2, 495},  {1, 3, 1500},  {1, 4, 300},  {3, 7, 1200},
                {3, 9, 300},  {4, 8, 270},  {2, 6, 495},   {6, 10, 484}, {7, 11, 1200},
                {8, 13, 270}, {9, 12, 300}, {10, 14, 440}, {4, 15, 30},  {6, 16, 11}};
  record.plan = plan;
  return record;
}

}  // namespace corvane::record
