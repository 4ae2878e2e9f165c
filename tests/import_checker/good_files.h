#pragma once

// Import files of a mill with one grade, one cutter of 100 inches, the widths 30 and 45, one
// customer and two periods, as the program writes them.

namespace corvane::import_checker {

// Delay on, batch off.
inline constexpr const char *kDelayFile =
    R"(addroot <CompressBlockNodes> True <batchSizeSolve> False <batchSizeTune> False <initialSolverAlgorithm> networkDualSolve <BatLP> dualSolve <batchSizePeriods> 1 <batchTuneStopThreshold> 100 <batchTuneTries> 99999 <batchSizeMode> 0 <batchSizePeriods> 9999 <batchSizeResolveFrequency> 5
addcommodity <name> "Deckle100"
addcommodity <name> "DemandWidth30"
addcommodity <name> "DemandWidth45"
addcommodity <name> "Waste"
addcommodity <name> "Machine_Time"
addperiod <name> "1"
addperiod <name> "2"
addnode <type> "Machine" <name> "M_C" <x> 10 <y> 210 <period> "1" <fixed> False <min> 0 <max> 7 <cost> 0 <overcost> +infinity
addnode <type> "Machine" <name> "M_C" <period> "2" <fixed> False <min> 0 <max> 7 <cost> 0 <overcost> +infinity
addattach <node> "M_C" <commodity> "Machine_Time" <in> False
addnode <type> "Process" <name> "G_C_100" <x> 180 <y> 210 <period> "1"
addattach <node> "G_C_100" <commodity> "Machine_Time" <in> True
addattach <node> "G_C_100" <commodity> "Deckle100" <quantity> 46 <in> False
addarc <commodity> "Machine_Time" <from> "M_C" <to> "G_C_100" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity
addnode <type> "Process" <name> "G_Pattern_0_C_100" <x> 420 <y> 0 <period> "1"
addattach <node> "G_Pattern_0_C_100" <commodity> "Deckle100" <in> True <quantity> -1
addattach <node> "G_Pattern_0_C_100" <commodity> "DemandWidth30" <in> False <quantity> 2
addattach <node> "G_Pattern_0_C_100" <commodity> "Waste" <in> False <quantity> 40
addarc <commodity> "Deckle100" <from> "G_C_100" <to> "G_Pattern_0_C_100" <flow> 0 <fixed> False <opportunity> 0 <cost> 10 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "Deckle100" <from> "G_C_100" <to> "G_Pattern_0_C_100" <flow> 0 <fixed> False <opportunity> 0 <cost> 10 <min> 0 <max> +infinity <period> "2"
addnode <type> "Process" <name> "G_Pattern_1_C_100" <x> 420 <y> 20 <period> "1"
addattach <node> "G_Pattern_1_C_100" <commodity> "Deckle100" <in> True <quantity> -1
addattach <node> "G_Pattern_1_C_100" <commodity> "DemandWidth45" <in> False <quantity> 1
addattach <node> "G_Pattern_1_C_100" <commodity> "DemandWidth30" <in> False <quantity> 1
addattach <node> "G_Pattern_1_C_100" <commodity> "Waste" <in> False <quantity> 25
addarc <commodity> "Deckle100" <from> "G_C_100" <to> "G_Pattern_1_C_100" <flow> 0 <fixed> False <opportunity> 0 <cost> 10 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "Deckle100" <from> "G_C_100" <to> "G_Pattern_1_C_100" <flow> 0 <fixed> False <opportunity> 0 <cost> 10 <min> 0 <max> +infinity <period> "2"
addnode <type> "StorageDemand" <name> "G_C_45.000" <x> 710 <y> 0 <storagemax> 0 <period> "1"
addnode <type> "StorageDemand" <name> "G_C_45.000" <storagemax> 0 <period> "2"
addattach <node> "G_C_45.000" <commodity> "DemandWidth45" <in> True
addattach <node> "G_C_45.000" <commodity> "DemandWidth45" <in> False
addnodetoset "G_C" "G_C_45.000"
addnode <type> "StorageDemand" <name> "G_C_30.000" <x> 710 <y> 0 <storagemax> 0 <period> "1"
addnode <type> "StorageDemand" <name> "G_C_30.000" <storagemax> 0 <period> "2"
addattach <node> "G_C_30.000" <commodity> "DemandWidth30" <in> True
addattach <node> "G_C_30.000" <commodity> "DemandWidth30" <in> False
addnodetoset "G_C" "G_C_30.000"
blockset "G_C"
addnode <type> "Block" <name> "G_C" <capMan> False <openAtStart> True <shutdownBenefit> 0 <startupCost> 0 <x> 710 <y> 0 <fixedCost> 0 <operational> Ignore <capManFixed> False <singlesource> False <sourcingChange> True <node> "None" <period> "1"
addnode <type> "Demand" <name> "G_Waste" <x> 710 <y> 80 <amount> 0 <fixed> False <period> "1"
addattach <node> "G_Waste" <commodity> "Waste" <in> True
addarc <commodity> "DemandWidth30" <from> "G_Pattern_0_C_100" <to> "G_C_30.000" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "Waste" <from> "G_Pattern_0_C_100" <to> "G_Waste" <flow> 0 <fixed> False <opportunity> 0 <cost> 12.5 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "Waste" <from> "G_Pattern_0_C_100" <to> "G_Waste" <flow> 0 <fixed> False <opportunity> 0 <cost> 12.5 <min> 0 <max> +infinity <period> "2"
addarc <commodity> "DemandWidth45" <from> "G_Pattern_1_C_100" <to> "G_C_45.000" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "DemandWidth30" <from> "G_Pattern_1_C_100" <to> "G_C_30.000" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "Waste" <from> "G_Pattern_1_C_100" <to> "G_Waste" <flow> 0 <fixed> False <opportunity> 0 <cost> 12.5 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "Waste" <from> "G_Pattern_1_C_100" <to> "G_Waste" <flow> 0 <fixed> False <opportunity> 0 <cost> 12.5 <min> 0 <max> +infinity <period> "2"
addnode <type> "StorageDemand" <name> "G_A_30.000" <x> 1200 <y> 0 <undercost> 50000 <storagemax> 0 <demandamount> 5 <period> "1"
addattach <node> "G_A_30.000" <commodity> "DemandWidth30" <in> True
addnodetoset "G_A" "G_A_30.000"
addnode <type> "Delay" <name> "Rail_G_A_30.000" <x> 910 <y> 0 <periodstodelay> 1 <period> "1"
addattach <node> "Rail_G_A_30.000" <commodity> "DemandWidth30" <in> True
addattach <node> "Rail_G_A_30.000" <commodity> "DemandWidth30" <in> False
addarc <commodity> "DemandWidth30" <from> "G_C_30.000" <to> "Rail_G_A_30.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "1" <cost> 1.5
addarc <commodity> "DemandWidth30" <from> "Rail_G_A_30.000" <to> "G_A_30.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "1" <cost> 0
addnode <type> "Delay" <name> "Rail_G_A_30.000" <periodstodelay> 1 <period> "2"
addattach <node> "Rail_G_A_30.000" <commodity> "DemandWidth30" <in> True
addattach <node> "Rail_G_A_30.000" <commodity> "DemandWidth30" <in> False
addarc <commodity> "DemandWidth30" <from> "G_C_30.000" <to> "Rail_G_A_30.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "2" <cost> 1.5
addarc <commodity> "DemandWidth30" <from> "Rail_G_A_30.000" <to> "G_A_30.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "2" <cost> 0
addnode <type> "Delay" <name> "Truck_G_A_30.000" <x> 910 <y> 0 <periodstodelay> 0.5 <period> "1"
addattach <node> "Truck_G_A_30.000" <commodity> "DemandWidth30" <in> True
addattach <node> "Truck_G_A_30.000" <commodity> "DemandWidth30" <in> False
addarc <commodity> "DemandWidth30" <from> "G_C_30.000" <to> "Truck_G_A_30.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "1" <cost> 1.5
addarc <commodity> "DemandWidth30" <from> "Truck_G_A_30.000" <to> "G_A_30.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "1" <cost> 0
addnode <type> "Delay" <name> "Truck_G_A_30.000" <periodstodelay> 0.5 <period> "2"
addattach <node> "Truck_G_A_30.000" <commodity> "DemandWidth30" <in> True
addattach <node> "Truck_G_A_30.000" <commodity> "DemandWidth30" <in> False
addarc <commodity> "DemandWidth30" <from> "G_C_30.000" <to> "Truck_G_A_30.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "2" <cost> 1.5
addarc <commodity> "DemandWidth30" <from> "Truck_G_A_30.000" <to> "G_A_30.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "2" <cost> 0
addnode <type> "StorageDemand" <name> "G_A_45.000" <x> 1200 <y> 0 <undercost> 50000 <storagemax> 0 <demandamount> 4 <period> "1"
addattach <node> "G_A_45.000" <commodity> "DemandWidth45" <in> True
addnodetoset "G_A" "G_A_45.000"
addnode <type> "Delay" <name> "Rail_G_A_45.000" <x> 910 <y> 20 <periodstodelay> 1 <period> "1"
addattach <node> "Rail_G_A_45.000" <commodity> "DemandWidth45" <in> True
addattach <node> "Rail_G_A_45.000" <commodity> "DemandWidth45" <in> False
addarc <commodity> "DemandWidth45" <from> "G_C_45.000" <to> "Rail_G_A_45.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "1" <cost> 1.5
addarc <commodity> "DemandWidth45" <from> "Rail_G_A_45.000" <to> "G_A_45.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "1" <cost> 0
addnode <type> "Delay" <name> "Rail_G_A_45.000" <periodstodelay> 1 <period> "2"
addattach <node> "Rail_G_A_45.000" <commodity> "DemandWidth45" <in> True
addattach <node> "Rail_G_A_45.000" <commodity> "DemandWidth45" <in> False
addarc <commodity> "DemandWidth45" <from> "G_C_45.000" <to> "Rail_G_A_45.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "2" <cost> 1.5
addarc <commodity> "DemandWidth45" <from> "Rail_G_A_45.000" <to> "G_A_45.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "2" <cost> 0
addnode <type> "Delay" <name> "Truck_G_A_45.000" <x> 910 <y> 20 <periodstodelay> 0.5 <period> "1"
addattach <node> "Truck_G_A_45.000" <commodity> "DemandWidth45" <in> True
addattach <node> "Truck_G_A_45.000" <commodity> "DemandWidth45" <in> False
addarc <commodity> "DemandWidth45" <from> "G_C_45.000" <to> "Truck_G_A_45.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "1" <cost> 1.5
addarc <commodity> "DemandWidth45" <from> "Truck_G_A_45.000" <to> "G_A_45.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "1" <cost> 0
addnode <type> "Delay" <name> "Truck_G_A_45.000" <periodstodelay> 0.5 <period> "2"
addattach <node> "Truck_G_A_45.000" <commodity> "DemandWidth45" <in> True
addattach <node> "Truck_G_A_45.000" <commodity> "DemandWidth45" <in> False
addarc <commodity> "DemandWidth45" <from> "G_C_45.000" <to> "Truck_G_A_45.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "2" <cost> 1.5
addarc <commodity> "DemandWidth45" <from> "Truck_G_A_45.000" <to> "G_A_45.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "2" <cost> 0
addnode <type> "StorageDemand" <name> "G_A_30.000" <undercost> 50000 <storagemax> 0 <demandamount> 6 <period> "2"
addnode <type> "StorageDemand" <name> "G_A_30.000" <undercost> 50000 <storagemax> 0 <period> "1"
addnode <type> "StorageDemand" <name> "G_A_30.000" <undercost> 50000 <storagemax> 0 <period> "2"
addnode <type> "StorageDemand" <name> "G_A_45.000" <undercost> 50000 <storagemax> 0 <period> "1"
addnode <type> "StorageDemand" <name> "G_A_45.000" <undercost> 50000 <storagemax> 0 <period> "2"
blockset "G_A"
addnode <type> "Block" <name> "G_A" <capMan> False <openAtStart> True <shutdownBenefit> 0 <startupCost> 0 <x> 1200 <y> 0 <fixedCost> 0 <operational> Ignore <capManFixed> False <singlesource> False <sourcingChange> True <node> "None"
# End of Corvane. import file.
)";

// Batch on, delay off.
inline constexpr const char *kBatchFile =
    R"(addroot <CompressBlockNodes> True <batchSizeSolve> False <batchSizeTune> True <initialSolverAlgorithm> networkDualSolve <BatLP> dualSolve <batchSizePeriods> 1 <batchTuneStopThreshold> 0 <batchTuneTries> 99999 <batchSizeMode> 1 <batchSizePeriods> 9999 <batchSizeResolveFrequency> 5
addcommodity <name> "Deckle100"
addcommodity <name> "DemandWidth30"
addcommodity <name> "DemandWidth45"
addcommodity <name> "Waste"
addcommodity <name> "Machine_Time"
addperiod <name> "1"
addperiod <name> "2"
addnode <type> "Machine" <name> "M_C" <x> 10 <y> 210 <period> "1" <fixed> False <min> 0 <max> 7 <cost> 0 <overcost> +infinity
addnode <type> "Machine" <name> "M_C" <period> "2" <fixed> False <min> 0 <max> 7 <cost> 0 <overcost> +infinity
addattach <node> "M_C" <commodity> "Machine_Time" <in> False
addnode <type> "Process" <name> "G_C_100" <x> 180 <y> 210 <period> "1"
addattach <node> "G_C_100" <commodity> "Machine_Time" <in> True
addattach <node> "G_C_100" <commodity> "Deckle100" <quantity> 46 <in> False
addarc <commodity> "Machine_Time" <from> "M_C" <to> "G_C_100" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity
addnode <type> "Batch" <name> "G_Batch_0_C_100" <singlePeriodSetups> True <x> 420 <y> 0 <flow> 0 <fixed> False <minrunlength> 0 <batchsize> 1 <setup> 0 <period> "1"
addnode <type> "Batch" <name> "G_Batch_0_C_100" <singlePeriodSetups> True <x> 420 <y> 0 <flow> 0 <fixed> False <minrunlength> 0 <batchsize> 1 <setup> 0 <period> "2"
addattach <node> "G_Batch_0_C_100" <commodity> "Deckle100" <in> True
addattach <node> "G_Batch_0_C_100" <commodity> "Deckle100" <in> False
addnode <type> "Process" <name> "G_Pattern_0_C_100" <x> 710 <y> 0 <period> "1"
addattach <node> "G_Pattern_0_C_100" <commodity> "Deckle100" <in> True <quantity> -1
addattach <node> "G_Pattern_0_C_100" <commodity> "DemandWidth30" <in> False <quantity> 2
addattach <node> "G_Pattern_0_C_100" <commodity> "Waste" <in> False <quantity> 40
addarc <commodity> "Deckle100" <from> "G_C_100" <to> "G_Batch_0_C_100" <flow> 0 <fixed> False <opportunity> 0 <cost> 10 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "Deckle100" <from> "G_C_100" <to> "G_Batch_0_C_100" <flow> 0 <fixed> False <opportunity> 0 <cost> 10 <min> 0 <max> +infinity <period> "2"
addarc <commodity> "Deckle100" <from> "G_Batch_0_C_100" <to> "G_Pattern_0_C_100" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity <period> "1"
addnode <type> "Batch" <name> "G_Batch_1_C_100" <singlePeriodSetups> True <x> 420 <y> 20 <flow> 0 <fixed> False <minrunlength> 0 <batchsize> 1 <setup> 0 <period> "1"
addnode <type> "Batch" <name> "G_Batch_1_C_100" <singlePeriodSetups> True <x> 420 <y> 20 <flow> 0 <fixed> False <minrunlength> 0 <batchsize> 1 <setup> 0 <period> "2"
addattach <node> "G_Batch_1_C_100" <commodity> "Deckle100" <in> True
addattach <node> "G_Batch_1_C_100" <commodity> "Deckle100" <in> False
addnode <type> "Process" <name> "G_Pattern_1_C_100" <x> 710 <y> 20 <period> "1"
addattach <node> "G_Pattern_1_C_100" <commodity> "Deckle100" <in> True <quantity> -1
addattach <node> "G_Pattern_1_C_100" <commodity> "DemandWidth45" <in> False <quantity> 1
addattach <node> "G_Pattern_1_C_100" <commodity> "DemandWidth30" <in> False <quantity> 1
addattach <node> "G_Pattern_1_C_100" <commodity> "Waste" <in> False <quantity> 25
addarc <commodity> "Deckle100" <from> "G_C_100" <to> "G_Batch_1_C_100" <flow> 0 <fixed> False <opportunity> 0 <cost> 10 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "Deckle100" <from> "G_C_100" <to> "G_Batch_1_C_100" <flow> 0 <fixed> False <opportunity> 0 <cost> 10 <min> 0 <max> +infinity <period> "2"
addarc <commodity> "Deckle100" <from> "G_Batch_1_C_100" <to> "G_Pattern_1_C_100" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity <period> "1"
addnode <type> "StorageDemand" <name> "G_C_45.000" <x> 1000 <y> 0 <storagemax> 0 <period> "1"
addnode <type> "StorageDemand" <name> "G_C_45.000" <storagemax> 0 <period> "2"
addattach <node> "G_C_45.000" <commodity> "DemandWidth45" <in> True
addattach <node> "G_C_45.000" <commodity> "DemandWidth45" <in> False
addnodetoset "G_C" "G_C_45.000"
addnode <type> "StorageDemand" <name> "G_C_30.000" <x> 1000 <y> 0 <storagemax> 0 <period> "1"
addnode <type> "StorageDemand" <name> "G_C_30.000" <storagemax> 0 <period> "2"
addattach <node> "G_C_30.000" <commodity> "DemandWidth30" <in> True
addattach <node> "G_C_30.000" <commodity> "DemandWidth30" <in> False
addnodetoset "G_C" "G_C_30.000"
blockset "G_C"
addnode <type> "Block" <name> "G_C" <capMan> False <openAtStart> True <shutdownBenefit> 0 <startupCost> 0 <x> 1000 <y> 0 <fixedCost> 0 <operational> Ignore <capManFixed> False <singlesource> False <sourcingChange> True <node> "None" <period> "1"
addnode <type> "Demand" <name> "G_Waste" <x> 1000 <y> 80 <amount> 0 <fixed> False <period> "1"
addattach <node> "G_Waste" <commodity> "Waste" <in> True
addarc <commodity> "DemandWidth30" <from> "G_Pattern_0_C_100" <to> "G_C_30.000" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "Waste" <from> "G_Pattern_0_C_100" <to> "G_Waste" <flow> 0 <fixed> False <opportunity> 0 <cost> 12.5 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "Waste" <from> "G_Pattern_0_C_100" <to> "G_Waste" <flow> 0 <fixed> False <opportunity> 0 <cost> 12.5 <min> 0 <max> +infinity <period> "2"
addarc <commodity> "DemandWidth45" <from> "G_Pattern_1_C_100" <to> "G_C_45.000" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "DemandWidth30" <from> "G_Pattern_1_C_100" <to> "G_C_30.000" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "Waste" <from> "G_Pattern_1_C_100" <to> "G_Waste" <flow> 0 <fixed> False <opportunity> 0 <cost> 12.5 <min> 0 <max> +infinity <period> "1"
addarc <commodity> "Waste" <from> "G_Pattern_1_C_100" <to> "G_Waste" <flow> 0 <fixed> False <opportunity> 0 <cost> 12.5 <min> 0 <max> +infinity <period> "2"
addnode <type> "StorageDemand" <name> "G_A_30.000" <x> 1200 <y> 0 <undercost> 50000 <storagemax> 0 <demandamount> 5 <period> "1"
addattach <node> "G_A_30.000" <commodity> "DemandWidth30" <in> True
addnodetoset "G_A" "G_A_30.000"
addarc <commodity> "DemandWidth30" <from> "G_C_30.000" <to> "G_A_30.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "1" <cost> 1.5
addarc <commodity> "DemandWidth30" <from> "G_C_30.000" <to> "G_A_30.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "2" <cost> 1.5
addnode <type> "StorageDemand" <name> "G_A_45.000" <x> 1200 <y> 0 <undercost> 50000 <storagemax> 0 <demandamount> 4 <period> "1"
addattach <node> "G_A_45.000" <commodity> "DemandWidth45" <in> True
addnodetoset "G_A" "G_A_45.000"
addarc <commodity> "DemandWidth45" <from> "G_C_45.000" <to> "G_A_45.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "1" <cost> 1.5
addarc <commodity> "DemandWidth45" <from> "G_C_45.000" <to> "G_A_45.000" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "2" <cost> 1.5
addnode <type> "StorageDemand" <name> "G_A_30.000" <undercost> 50000 <storagemax> 0 <demandamount> 6 <period> "2"
addnode <type> "StorageDemand" <name> "G_A_30.000" <undercost> 50000 <storagemax> 0 <period> "1"
addnode <type> "StorageDemand" <name> "G_A_30.000" <undercost> 50000 <storagemax> 0 <period> "2"
addnode <type> "StorageDemand" <name> "G_A_45.000" <undercost> 50000 <storagemax> 0 <period> "1"
addnode <type> "StorageDemand" <name> "G_A_45.000" <undercost> 50000 <storagemax> 0 <period> "2"
blockset "G_A"
addnode <type> "Block" <name> "G_A" <capMan> False <openAtStart> True <shutdownBenefit> 0 <startupCost> 0 <x> 1200 <y> 0 <fixedCost> 0 <operational> Ignore <capManFixed> False <singlesource> False <sourcingChange> True <node> "None"
# End of Corvane. import file.
)";

// Patterns only.
inline constexpr const char *kPatternsFile =
    R"(addroot <CompressBlockNodes> True <batchSizeSolve> False <batchSizeTune> False <initialSolverAlgorithm> networkDualSolve <BatLP> dualSolve <batchSizePeriods> 1 <batchTuneStopThreshold> 100 <batchTuneTries> 99999 <batchSizeMode> 0 <batchSizePeriods> 9999 <batchSizeResolveFrequency> 5
addcommodity <name> "Deckle100"
addcommodity <name> "DemandWidth30"
addcommodity <name> "DemandWidth45"
addcommodity <name> "Waste"
addcommodity <name> "Machine_Time"
addperiod <name> "1"
addperiod <name> "2"
addnode <type> "Process" <name> "G_Pattern_0_C_100" <x> 420 <y> 0 <period> "1"
addattach <node> "G_Pattern_0_C_100" <commodity> "Deckle100" <in> True <quantity> -1
addattach <node> "G_Pattern_0_C_100" <commodity> "DemandWidth30" <in> False <quantity> 2
addattach <node> "G_Pattern_0_C_100" <commodity> "Waste" <in> False <quantity> 40
addnode <type> "Process" <name> "G_Pattern_1_C_100" <x> 420 <y> 20 <period> "1"
addattach <node> "G_Pattern_1_C_100" <commodity> "Deckle100" <in> True <quantity> -1
addattach <node> "G_Pattern_1_C_100" <commodity> "DemandWidth45" <in> False <quantity> 1
addattach <node> "G_Pattern_1_C_100" <commodity> "DemandWidth30" <in> False <quantity> 1
addattach <node> "G_Pattern_1_C_100" <commodity> "Waste" <in> False <quantity> 25
# End of Corvane. import file.
)";

}  // namespace corvane::import_checker
