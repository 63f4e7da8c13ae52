// The commands: each does its work, prints, and raises a Failure or a UsageError.
#pragma once

#include <string_view>

#include "tool/options/options.h"

namespace zortunedex::kit::tool::commands {

void ListChannels(const Options& options);
void ShowChannel(const Options& options);
void NextChannel(const Options& options);
void PreviousChannel(const Options& options);
void FindChannel(const Options& options);

void AddChannel(const Options& options);
void SetChannel(const Options& options);
void EditChannels(const Options& options);
void RemoveChannels(const Options& options);
void RenameChannel(const Options& options);
void FavorChannel(const Options& options);
void LockChannel(const Options& options);
void MoveChannel(const Options& options);
void SortChannels(const Options& options);

void ExportChannels(const Options& options);
void ImportChannels(const Options& options);

void MergeChannels(const Options& options);
void CompareChannels(const Options& options);

void BuildCatalogue(const Options& options);
void ListSatellites(const Options& options);
void ShowSatellite(const Options& options);
void ListTransponders(const Options& options);
void ListLnbs(const Options& options);

void ListDishes(const Options& options);
void AssignSatellite(const Options& options);
void RemoveAssignment(const Options& options);
void ClearDishes(const Options& options);
void ListAreas(const Options& options);
void ListSubAreas(const Options& options);
void ListPresetChannels(const Options& options);
void SelectPreset(const Options& options);
void ShowSelectedPreset(const Options& options);
void SaveCustomerList(const Options& options);
void DeleteCustomerList(const Options& options);

void RunBatch(const Options& options);
/// True for the name of a command that a batch may hold.
bool IsOfBatch(std::string_view command);

void CheckFiles(const Options& options);
void RepairFiles(const Options& options);

void ShowInfo(const Options& options);
void FormatFile(const Options& options);
void ListCountries(const Options& options);
void PrintCompletion(const Options& options);

void UndoChange(const Options& options);
void RedoChange(const Options& options);
void ListHistory(const Options& options);
void ShowSnapshot(const Options& options);
void CompareSnapshots(const Options& options);
void RestoreSnapshot(const Options& options);
void PruneHistory(const Options& options);

}  // namespace zortunedex::kit::tool::commands
