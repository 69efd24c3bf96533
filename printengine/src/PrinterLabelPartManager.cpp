#include "PrintEngine/PartManagement/PrinterLabelPartManager.h"

namespace PrintEngine::PartManagement {

void PrinterLabelPartManager::SetInstalledPart(LabelPart const& part) { installed_ = part; }

void PrinterLabelPartManager::LoadPartFromPrinter() { part_ = installed_; }

// The desk's part is one label wide already.
void PrinterLabelPartManager::MergeAllColumns() {}

LabelPart PrinterLabelPartManager::GetLabelPart() const { return part_; }

}  // namespace PrintEngine::PartManagement
