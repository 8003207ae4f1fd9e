// A contact of today's zLog as the neutral one, and back.
//
// CALL, the moment, BAND, FREQ, MODE and SUBMODE, RST_SENT, RST_RCVD, OPERATOR, STATION_CALLSIGN
// and CONTEST_ID have their fields; numbers of digits are STX and SRX, others STX_STRING and
// SRX_STRING; zLog's numeric power is TX_PWR, the memo without its frequency COMMENT. All else of
// zLog's stands in fields "APP_TOBARINE_ZLOG_...", as does what ADIF's lists do not know: the
// contest's name and the mode "Other".
#pragma once

#include "log/contact.h"
#include "rules/findings.h"
#include "rules/moment.h"
#include "zlog/zlog_qso.h"

namespace tobarine {

// Clears and fills the contact; its origin stays the caller's.
void contact_from_zlog(const ZlogQso& qso, const ZlogHead& head, Contact& contact);

// Replaces all of the contact. What a log of other origin says in ADIF's fields or in those of
// contest programs is taken where zLog's own are missing; what zLog has no place for is reported.
// `form_has_freq`: else the frequency goes into the memo.
void zlog_from_contact(const Contact& contact, bool form_has_freq, ZlogQso& qso,
                       FindingLog& findings);

// The head of a log that begins with this contact.
ZlogHead zlog_head(const Contact& first, Zone zone);

}  // namespace tobarine
