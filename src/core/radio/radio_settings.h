// The settings keys of the radio window, with their defaults.
#pragma once

#include "shell/settings.h"

namespace tavlorin::radio_settings {

inline constexpr IntSetting kRefreshRadioInterval{"m_nRefreshRadioInterval", 300};
inline constexpr FlagSetting kActiveOnly{"m_bActiveOnly", false};
inline constexpr FlagSetting kTrackDualFast{"m_bTrackDualFast", false};
inline constexpr IntSetting kVoiceFreqInterval{"m_nVoiceFreqIntervalMillitm", 500};
inline constexpr IntSetting kVoiceModeInterval{"m_nVoiceModeIntervalMillitm", 500};
inline constexpr IntSetting kCommsRxTimeout{"m_nCommsRxTimeout", 500};

}  // namespace tavlorin::radio_settings
