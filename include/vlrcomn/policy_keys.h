/**
 * @file
 * @brief Section and key names of the agent's policy, its task files and its property report.
 *
 * Every component that reads or writes these settings takes the names from here, so that all spell
 * them alike. The library itself reads none of them; where the settings are stored and what type a
 * value has is the agent's affair.
 *
 * Policy and property names are wide, task-file names narrow. Texts are case-sensitive. Some names
 * share a text on purpose, for example ::velora_com::qel::section_general and the narrow
 * ::velora_com::qel::GeneralSection.
 *
 * Lifetime: the constants are complete once the library is loaded, before any other code of the
 * library or of a program that links with it runs, static initialisers included. They are gone when
 * the process destroys its static objects: code that runs at exit must not use them. They are never
 * written to, so any thread may read them.
 */
#ifndef VLRCOMN_POLICY_KEYS_H
#define VLRCOMN_POLICY_KEYS_H

#include <string>

#include "vlrcomn/types.h"

namespace velora_com::qel {

/** @name Sections of the agent policy
 * @{ */
extern VLRCOMN_API const std::wstring section_general;
extern VLRCOMN_API const std::wstring section_network;
extern VLRCOMN_API const std::wstring section_listenserver;
extern VLRCOMN_API const std::wstring section_events;
extern VLRCOMN_API const std::wstring section_logging;
extern VLRCOMN_API const std::wstring section_sitelist;
extern VLRCOMN_API const std::wstring section_proxy;
extern VLRCOMN_API const std::wstring section_version_control;
extern VLRCOMN_API const std::wstring section_inetmanager;
extern VLRCOMN_API const std::wstring section_advanced;
/** @} */

/** @name Keys of the policy section "General"
 * @{ */
extern VLRCOMN_API const std::wstring key_general_bCollectFullProps;
extern VLRCOMN_API const std::wstring key_general_PolicyEnforcementInterval;
extern VLRCOMN_API const std::wstring key_general_force_install;
/** @} */

/** @name Keys of the policy section "Network"
 * @{ */
extern VLRCOMN_API const std::wstring key_network_bAgentASCI;
extern VLRCOMN_API const std::wstring key_network_asci_interval;
extern VLRCOMN_API const std::wstring key_network_asci_do_when;
/** @} */

/** @name Keys of the policy section "AgentListenServer"
 * @{ */
extern VLRCOMN_API const std::wstring key_ls_bEnableAgentPing;
extern VLRCOMN_API const std::wstring key_ls_bEnableRelayService;
extern VLRCOMN_API const std::wstring key_ls_AgentPingPort;
extern VLRCOMN_API const std::wstring key_ls_bListenToKSVServerOnly;
/** @} */

/** @name Keys of the policy section "AgentEvents"
 * @{ */
extern VLRCOMN_API const std::wstring key_events_EnableEventTrigger;
extern VLRCOMN_API const std::wstring key_events_EventTriggerThreshold;
extern VLRCOMN_API const std::wstring key_events_EventTriggerDelayMins;
extern VLRCOMN_API const std::wstring key_events_MaxEventsPerTrigger;
/** @} */

/** @name Keys of the policy section "AgentLogging"
 * @{ */
extern VLRCOMN_API const std::wstring key_log_bEnableLog;
extern VLRCOMN_API const std::wstring key_log_bLimitLogSize;
extern VLRCOMN_API const std::wstring key_log_nLogSizeLimit;
extern VLRCOMN_API const std::wstring key_log_bVerbose;
extern VLRCOMN_API const std::wstring key_log_bEnableRemoteLog;
/** @} */

/** @name Keys of the policy section "SiteList"
 * @{ */
extern VLRCOMN_API const std::wstring key_sl_NumberOfSites;
extern VLRCOMN_API const std::wstring key_sl_protocol;
extern VLRCOMN_API const std::wstring key_sl_enabled;
extern VLRCOMN_API const std::wstring key_sl_site_id;
extern VLRCOMN_API const std::wstring key_sl_site_name;
extern VLRCOMN_API const std::wstring key_sl_sites_server;
extern VLRCOMN_API const std::wstring key_sl_server_name;
extern VLRCOMN_API const std::wstring key_sl_server_ip;
extern VLRCOMN_API const std::wstring key_sl_share_name;
extern VLRCOMN_API const std::wstring key_sl_relative_path;
extern VLRCOMN_API const std::wstring key_sl_site_port;
extern VLRCOMN_API const std::wstring key_sl_type;
extern VLRCOMN_API const std::wstring key_sl_use_auth;
extern VLRCOMN_API const std::wstring key_sl_user_name;
extern VLRCOMN_API const std::wstring key_sl_password;
extern VLRCOMN_API const std::wstring key_sl_password_encrypted;
extern VLRCOMN_API const std::wstring key_sl_domain;
extern VLRCOMN_API const std::wstring key_sl_order;
extern VLRCOMN_API const std::wstring key_sl_local;
/** @} */

/** @name Keys of the policy section "ProxySettings"
 * @{ */
extern VLRCOMN_API const std::wstring key_proxy_type;
extern VLRCOMN_API const std::wstring key_proxy_http_server;
extern VLRCOMN_API const std::wstring key_proxy_http_port;
extern VLRCOMN_API const std::wstring key_proxy_http_use_auth;
extern VLRCOMN_API const std::wstring key_proxy_http_user;
extern VLRCOMN_API const std::wstring key_proxy_http_password;
extern VLRCOMN_API const std::wstring key_proxy_ftp_server;
extern VLRCOMN_API const std::wstring key_proxy_ftp_port;
extern VLRCOMN_API const std::wstring key_proxy_ftp_use_auth;
extern VLRCOMN_API const std::wstring key_proxy_ftp_user;
extern VLRCOMN_API const std::wstring key_proxy_ftp_password;
extern VLRCOMN_API const std::wstring key_proxy_num_exceptions;
extern VLRCOMN_API const std::wstring key_proxy_exception;
extern VLRCOMN_API const std::wstring key_proxy_bypass_local;
/** @} */

/** @name Keys of the policy section "VersionControl"
 * @{ */
extern VLRCOMN_API const std::wstring key_vc_version;
/** @} */

/** @name Keys of the policy section "InetManager"
 * @{ */
extern VLRCOMN_API const std::wstring key_inetmgr_total_sites;
extern VLRCOMN_API const std::wstring key_inetmgr_disabled_sites;
extern VLRCOMN_API const std::wstring key_inetmgr_sl_order;
extern VLRCOMN_API const std::wstring key_inetmgr_sl_disabled_site;
/** @} */

/** @name Keys of the policy section "Advanced"
 * @{ */
extern VLRCOMN_API const std::wstring key_advanced_FindNearestMethod;
extern VLRCOMN_API const std::wstring key_advanced_overwrite_client_sites;
/** @} */

/** @name Keys of the agent policy whose names carry no section
 * @{ */
extern VLRCOMN_API const std::wstring key_EnforcePolicy;
extern VLRCOMN_API const std::wstring key_relay_service_enabled;
extern VLRCOMN_API const std::wstring key_p2p_service_enabled;
extern VLRCOMN_API const std::wstring key_agent_serviceport;
extern VLRCOMN_API const std::wstring key_count_relay_failure_connections;
extern VLRCOMN_API const std::wstring key_count_relay_max_connections_exceeded;
/** @} */

/** @name Sections of a task file
 * @{ */
extern VLRCOMN_API const std::string TaskSection;
extern VLRCOMN_API const std::string TaskGroupSection;
extern VLRCOMN_API const std::string GeneralSection;
extern VLRCOMN_API const std::string TaskRoot;
extern VLRCOMN_API const std::string SettingsSection;
extern VLRCOMN_API const std::string Schedule_Section;
extern VLRCOMN_API const std::string DependenciesSection;
/** @} */

/** @name Keys of a task file
 * @{ */
extern VLRCOMN_API const std::string TaskNameKey;
extern VLRCOMN_API const std::string PlatformsKey;
extern VLRCOMN_API const std::string TaskGuidKey;
extern VLRCOMN_API const std::string SoftwareIdKey;
extern VLRCOMN_API const std::string PriorityKey;
extern VLRCOMN_API const std::string VersionKey;
extern VLRCOMN_API const std::string TaskTypeKey;
extern VLRCOMN_API const std::string CreatorSoftwareKey;
extern VLRCOMN_API const std::string PendingKey;
extern VLRCOMN_API const std::string EnabledKey;
extern VLRCOMN_API const std::string StopAfterMinutesKey;
extern VLRCOMN_API const std::string DeleteWhenFinishedKey;
extern VLRCOMN_API const std::string StartDateTime_Key;
extern VLRCOMN_API const std::string StopDateTime_Key;
extern VLRCOMN_API const std::string StopTimeSpecified_Key;
extern VLRCOMN_API const std::string ScheduleType_Key;
extern VLRCOMN_API const std::string IdleMinutes_Key;
extern VLRCOMN_API const std::string RunIfMissed_Key;
extern VLRCOMN_API const std::string RunIfMissedDelay_Key;
extern VLRCOMN_API const std::string AtStartupDelayMinutes_Key;
extern VLRCOMN_API const std::string RandomizationEnabled_Key;
extern VLRCOMN_API const std::string RandomizationInterval_Key;
extern VLRCOMN_API const std::string TaskRepeatable_Key;
extern VLRCOMN_API const std::string RepeatOption_Key;
extern VLRCOMN_API const std::string RepeatInterval_Key;
extern VLRCOMN_API const std::string UntilOption_Key;
extern VLRCOMN_API const std::string UntilDuration_Key;
extern VLRCOMN_API const std::string UntilTime_Key;
extern VLRCOMN_API const std::string GMT_Key;
extern VLRCOMN_API const std::string TaskFinished_Key;
extern VLRCOMN_API const std::string RepeatDays_Key;
extern VLRCOMN_API const std::string DaysOfWeek_Key;
extern VLRCOMN_API const std::string RepeatWeeks_Key;
extern VLRCOMN_API const std::string MonthOption_Key;
extern VLRCOMN_API const std::string DayNumOfMonth_Key;
extern VLRCOMN_API const std::string WeekNumOfMonth_Key;
extern VLRCOMN_API const std::string DayOfWeek_Key;
extern VLRCOMN_API const std::string MaskMonthsOfYear_Key;
extern VLRCOMN_API const std::string Dependency_I_Key;
extern VLRCOMN_API const std::string NumDependencies_Key;
extern VLRCOMN_API const std::string EnableRunTaskOnceADay_Key;
/** @} */

/** @name Section and keys of the property report
 * @{ */
extern VLRCOMN_API const std::wstring props_section_general;
extern VLRCOMN_API const std::wstring props_key_installed_path;
extern VLRCOMN_API const std::wstring props_key_product_version;
extern VLRCOMN_API const std::wstring props_key_hotfix_version;
extern VLRCOMN_API const std::wstring props_key_show_ui;
extern VLRCOMN_API const std::wstring props_key_show_reboot_ui;
extern VLRCOMN_API const std::wstring props_key_reboot_timeout;
extern VLRCOMN_API const std::wstring props_key_plugin_version;
extern VLRCOMN_API const std::wstring props_key_language;
extern VLRCOMN_API const std::wstring props_key_agent_guid;
extern VLRCOMN_API const std::wstring props_key_asci;
extern VLRCOMN_API const std::wstring props_key_refresh_interval;
extern VLRCOMN_API const std::wstring props_loggedon_user;
/** @} */

}  // namespace velora_com::qel

#endif
