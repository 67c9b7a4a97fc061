#pragma once

#include "plugins/3dsmax/export/export_notes.h"

/// A program that hosts the plug-in can receive the reports of its commands: it exports a function
/// of this type under this name. The text is null-terminated UTF-8; docs/report.md describes it.
using HostExportReport = void(const char* json_utf8);
constexpr char kHostExportReport[] = "vsq_host_export_report";

/// Hands the notes of a command to the log and to the host program when it is destroyed, so on
/// every way out of the command. Never throws: a report that can't be made is dropped.
class ReportDelivery {
public:
    /// Borrows both. `command` is the command's name in the report.
    ReportDelivery(const ExportNotes& notes, const char* command)
        : notes_(notes), command_(command) {}
    ReportDelivery(const ReportDelivery&) = delete;
    ReportDelivery& operator=(const ReportDelivery&) = delete;
    ~ReportDelivery();

private:
    const ExportNotes& notes_;
    const char* command_;
};
