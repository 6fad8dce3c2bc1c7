/// @file
/// Shared knowledge that every plug-in needs, as static functions.
#pragma once

#include <pi/ssd_endurance.h>
#include <pi/types.h>

#include <string>
#include <utility>
#include <vector>

namespace PI {

class CEvent;
class CProperty;
struct _PROPERTY_DESCRIPTION;

/// All functions are stateless and thread-safe, and throw only what the standard library throws when memory
/// runs out, unless they say otherwise. Results of type int are error codes (pi/vocabulary.h).
class PI_API CPluginHelper {
public:
    CPluginHelper() = delete;

    // --- Properties

    /// Copies a description's fields into a property; m_Attribute5, m_Format and all data stay as they are.
    static void GenerateCProperty(const _PROPERTY_DESCRIPTION& description, CProperty& property);

    // --- Events

    /// Renders an event as key/value pairs: "EventID", "Host", "Source", "Timestamp", "Datetime", "Severity",
    /// "Placeholders", "Description", "SequenceNumber", in this order.
    ///
    /// The description is the language resource whose number is the event's identifier, with the first %1 to
    /// %6 replaced by the placeholders in turn; without one it reads "Unknown Event" and "Placeholders" is
    /// left out. What the language support throws is absorbed. The event's resolved placeholders are written.
    static std::vector<std::pair<std::string, std::string>> StringifyEventMessage(CEvent& event);

    // --- Drives: identification

    /// Splits the model text of a SATA drive (ATA IDENTIFY DEVICE, words 27 to 46) into vendor and model.
    ///
    /// @param vendor out: "--" when the text does not tell
    /// @param model  out: the bare model name
    /// @return 0 always
    static int SplitSATAModelName(const std::string& modelText, std::string& vendor, std::string& model);

    /// Removes what some vendors put around their serial numbers ("WD-", "JA1000", Seagate's suffix).
    /// @param vendor compared without regard to case
    /// @param serial changed in place where a rule applies
    static void CorrectSerialNumber(const std::string& vendor, const std::string& model, std::string& serial);

    /// Whether a vendor text is that of a hypervisor's virtual disk: "VMware" exactly, or the bytes CEh FAh.
    static bool IsVirtualDisk(std::string& vendor);

    // --- Drives: rotation speed

    /// Rotation speed of a SATA disk that does not report it, from its names as SplitSATAModelName gives
    /// them.
    ///
    /// @param vendor compared without regard to case
    /// @param rpm    out: rotations per minute; 7200 for every drive that no rule names
    /// @return 0 always
    /// @throws std::out_of_range, with rpm set to 7200, for Hitachi and HGST models of less than three
    /// characters
    static int GetSATARPM(const std::string& vendor, const std::string& model, unsigned long& rpm);

    /// The rounded figure, in thousands of rotations per minute, that users are shown: 4.2, 5.4, 7.2, 10, 15
    /// or 20.
    /// @return 0 always
    static int RoundRPM(unsigned long rpm, float& thousands);

    // --- Drives: solid-state lifetime

    /// First row of SATASSDEndurance that matches a model, without regard to case.
    /// @return a row owned by the library, or null
    static const _SSD_ENDURANCE* findLifeTimeProp(const std::string& model);

    /// Estimates how long a solid-state drive will serve, within a span of five years (43829 hours).
    ///
    /// The wear in percent counts where it is known; otherwise the amount written against the rated
    /// endurance.
    /// @param powerOnHours   hours the drive has been powered
    /// @param bytesWritten   bytes; 0 when unknown
    /// @param percentUsed    wear in percent; 0 when unknown, above 100 counts as 100
    /// @param enduranceTB    terabytes that may be written; 0 when unknown
    /// @param remainingHours out: 1 to 43829, or all ones when nothing can be estimated
    /// @return whether an estimate was written
    static bool ComputeRemainingLifeTime(unsigned long powerOnHours, unsigned long bytesWritten,
                                         unsigned int percentUsed, unsigned long enduranceTB,
                                         unsigned long& remainingHours);

    // --- Drives: combination and units

    /// Whether a drive may join the drives of a container.
    ///
    /// What the permissions and the attribute stand for is the caller's business; the rules are fixed. Traced
    /// under category 21.
    /// @param containerMedia PropertyValue::HDD, PropertyValue::SSD or another medium
    /// @param driveType      0 when unknown: nothing is checked then
    /// @param driveMedia     0 when unknown: nothing is checked then
    /// @return SUCCESS, NO_MIX_OF_DIFFERENT_TYPES_IN_LD or NO_MIX_OF_DIFFERENT_MEDIA_TYPES_IN_LD
    static int ValidatePhysicalDriveCombination(bool permit0, bool permit1, bool permit2, bool permit3,
                                                int containerType, int containerMedia,
                                                bool containerAttribute, int driveType, int driveMedia,
                                                bool driveAttribute);

    /// Scales a byte count to the largest binary unit in which it is at least 1.
    ///
    /// @param value out: single precision; above 1024 only in petabytes
    /// @return true always
    static bool ConvertBytesToOtherUnit(unsigned long bytes, float& value, _UNITS& unit);
};

}  // namespace PI
