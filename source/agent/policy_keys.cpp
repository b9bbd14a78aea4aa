#include "vlrcomn/policy_keys.h"

#include "support/early_init.h"

// NOLINTBEGIN(cert-err58-cpp): the interface has strings; without memory for them no program starts
namespace velora_com::qel {

// Sections of the agent policy.
const std::wstring VLRCOMN_EARLY_INIT section_general = L"General";
const std::wstring VLRCOMN_EARLY_INIT section_network = L"Network";
const std::wstring VLRCOMN_EARLY_INIT section_listenserver = L"AgentListenServer";
const std::wstring VLRCOMN_EARLY_INIT section_events = L"AgentEvents";
const std::wstring VLRCOMN_EARLY_INIT section_logging = L"AgentLogging";
const std::wstring VLRCOMN_EARLY_INIT section_sitelist = L"SiteList";
const std::wstring VLRCOMN_EARLY_INIT section_proxy = L"ProxySettings";
const std::wstring VLRCOMN_EARLY_INIT section_version_control = L"VersionControl";
const std::wstring VLRCOMN_EARLY_INIT section_inetmanager = L"InetManager";
const std::wstring VLRCOMN_EARLY_INIT section_advanced = L"Advanced";

// Keys of the policy section "General".
const std::wstring VLRCOMN_EARLY_INIT key_general_bCollectFullProps = L"bCollectFullProps";
const std::wstring VLRCOMN_EARLY_INIT key_general_PolicyEnforcementInterval =
    L"PolicyEnforcementInterval";
const std::wstring VLRCOMN_EARLY_INIT key_general_force_install = L"ForceInstall";

// Keys of the policy section "Network".
const std::wstring VLRCOMN_EARLY_INIT key_network_bAgentASCI = L"bAgentASCI";
const std::wstring VLRCOMN_EARLY_INIT key_network_asci_interval = L"CheckNetworkMessageInterval";
const std::wstring VLRCOMN_EARLY_INIT key_network_asci_do_when = L"AsciDoWhen";

// Keys of the policy section "AgentListenServer".
const std::wstring VLRCOMN_EARLY_INIT key_ls_bEnableAgentPing = L"bEnableAgentPing";
const std::wstring VLRCOMN_EARLY_INIT key_ls_bEnableRelayService = L"bEnableRelayService";
const std::wstring VLRCOMN_EARLY_INIT key_ls_AgentPingPort = L"AgentPingPort";
const std::wstring VLRCOMN_EARLY_INIT key_ls_bListenToKSVServerOnly = L"bListenToKSVServerOnly";

// Keys of the policy section "AgentEvents".
const std::wstring VLRCOMN_EARLY_INIT key_events_EnableEventTrigger = L"AgPlcyEnableEventTrigger";
const std::wstring VLRCOMN_EARLY_INIT key_events_EventTriggerThreshold =
    L"AgPlcyEventTriggerThreshold";
const std::wstring VLRCOMN_EARLY_INIT key_events_EventTriggerDelayMins =
    L"AgPlcyEventTriggerDelayMins";
const std::wstring VLRCOMN_EARLY_INIT key_events_MaxEventsPerTrigger = L"AgPlcyMaxEventsPerTrigger";

// Keys of the policy section "AgentLogging".
const std::wstring VLRCOMN_EARLY_INIT key_log_bEnableLog = L"bEnableLog";
const std::wstring VLRCOMN_EARLY_INIT key_log_bLimitLogSize = L"bLimitLogSize";
const std::wstring VLRCOMN_EARLY_INIT key_log_nLogSizeLimit = L"nLogSizeLimit";
const std::wstring VLRCOMN_EARLY_INIT key_log_bVerbose = L"bVerbose";
const std::wstring VLRCOMN_EARLY_INIT key_log_bEnableRemoteLog = L"bEnableRemoteLog";

// Keys of the policy section "SiteList".
const std::wstring VLRCOMN_EARLY_INIT key_sl_NumberOfSites = L"uiNumberOfSites";
const std::wstring VLRCOMN_EARLY_INIT key_sl_protocol = L"uiSiteType";
const std::wstring VLRCOMN_EARLY_INIT key_sl_enabled = L"bEnabled";
const std::wstring VLRCOMN_EARLY_INIT key_sl_site_id = L"szID";
const std::wstring VLRCOMN_EARLY_INIT key_sl_site_name = L"szName";
const std::wstring VLRCOMN_EARLY_INIT key_sl_sites_server = L"szServer";
const std::wstring VLRCOMN_EARLY_INIT key_sl_server_name = L"szServerName";
const std::wstring VLRCOMN_EARLY_INIT key_sl_server_ip = L"szServerIP";
const std::wstring VLRCOMN_EARLY_INIT key_sl_share_name = L"szShareName";
const std::wstring VLRCOMN_EARLY_INIT key_sl_relative_path = L"szRelativePath";
const std::wstring VLRCOMN_EARLY_INIT key_sl_site_port = L"uiPort";
const std::wstring VLRCOMN_EARLY_INIT key_sl_type = L"uiType";
const std::wstring VLRCOMN_EARLY_INIT key_sl_use_auth = L"bUseAuth";
const std::wstring VLRCOMN_EARLY_INIT key_sl_user_name = L"szUserName";
const std::wstring VLRCOMN_EARLY_INIT key_sl_password = L"szPassword";
const std::wstring VLRCOMN_EARLY_INIT key_sl_password_encrypted = L"bEncrypted";
const std::wstring VLRCOMN_EARLY_INIT key_sl_domain = L"szDomainName";
const std::wstring VLRCOMN_EARLY_INIT key_sl_order = L"uiOrder";
const std::wstring VLRCOMN_EARLY_INIT key_sl_local = L"bLocal";

// Keys of the policy section "ProxySettings".
const std::wstring VLRCOMN_EARLY_INIT key_proxy_type = L"uiUseProxyType";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_http_server = L"szHttpProxyServer";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_http_port = L"uiHttpProxyPort";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_http_use_auth = L"bUseHttpAuthentication";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_http_user = L"szHttpProxyUser";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_http_password = L"szHttpProxyPassword";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_ftp_server = L"szFtpProxyServer";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_ftp_port = L"uiFtpProxyPort";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_ftp_use_auth = L"bUseFtpAuthentication";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_ftp_user = L"szFtpProxyUser";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_ftp_password = L"szFtpProxyPassword";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_num_exceptions = L"uiNumExceptions";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_exception = L"Exception";
const std::wstring VLRCOMN_EARLY_INIT key_proxy_bypass_local = L"bBypassLocalAddress";

// Keys of the policy section "VersionControl".
const std::wstring VLRCOMN_EARLY_INIT key_vc_version = L"Version";

// Keys of the policy section "InetManager".
const std::wstring VLRCOMN_EARLY_INIT key_inetmgr_total_sites = L"SitelistOrderNum";
const std::wstring VLRCOMN_EARLY_INIT key_inetmgr_disabled_sites = L"DisabledSiteNum";
const std::wstring VLRCOMN_EARLY_INIT key_inetmgr_sl_order = L"SitelistOrder";
const std::wstring VLRCOMN_EARLY_INIT key_inetmgr_sl_disabled_site = L"DisabledSites";

// Keys of the policy section "Advanced".
const std::wstring VLRCOMN_EARLY_INIT key_advanced_FindNearestMethod = L"uiFindNearestMethod";
const std::wstring VLRCOMN_EARLY_INIT key_advanced_overwrite_client_sites = L"OverwriteClientSites";

// Keys of the agent policy whose names carry no section.
const std::wstring VLRCOMN_EARLY_INIT key_EnforcePolicy = L"EnforcePolicy";
const std::wstring VLRCOMN_EARLY_INIT key_relay_service_enabled = L"bEnableRelayService";
const std::wstring VLRCOMN_EARLY_INIT key_p2p_service_enabled = L"bEnableP2PService";
const std::wstring VLRCOMN_EARLY_INIT key_agent_serviceport = L"AgtServiceMgrPort";
const std::wstring VLRCOMN_EARLY_INIT key_count_relay_failure_connections =
    L"FAILED_TO_CONN_SERVER";
const std::wstring VLRCOMN_EARLY_INIT key_count_relay_max_connections_exceeded =
    L"MAX_CONN_EXCEEDED";

// Sections of a task file.
const std::string VLRCOMN_EARLY_INIT TaskSection = "Task";
const std::string VLRCOMN_EARLY_INIT TaskGroupSection = "TaskGroup";
const std::string VLRCOMN_EARLY_INIT GeneralSection = "General";
const std::string VLRCOMN_EARLY_INIT TaskRoot = "TaskRoot";
const std::string VLRCOMN_EARLY_INIT SettingsSection = "Settings";
const std::string VLRCOMN_EARLY_INIT Schedule_Section = "Schedule";
const std::string VLRCOMN_EARLY_INIT DependenciesSection = "Task Dependencies";

// Keys of a task file.
const std::string VLRCOMN_EARLY_INIT TaskNameKey = "DisplayName";
const std::string VLRCOMN_EARLY_INIT PlatformsKey = "Platforms";
const std::string VLRCOMN_EARLY_INIT TaskGuidKey = "TaskID";
const std::string VLRCOMN_EARLY_INIT SoftwareIdKey = "SoftwareID";
const std::string VLRCOMN_EARLY_INIT PriorityKey = "Priority";
const std::string VLRCOMN_EARLY_INIT VersionKey = "TaskVersion";
const std::string VLRCOMN_EARLY_INIT TaskTypeKey = "TaskType";
const std::string VLRCOMN_EARLY_INIT CreatorSoftwareKey = "CreatorID";
const std::string VLRCOMN_EARLY_INIT PendingKey = "TaskPending";
const std::string VLRCOMN_EARLY_INIT EnabledKey = "Enabled";
const std::string VLRCOMN_EARLY_INIT StopAfterMinutesKey = "StopAfterMinutes";
const std::string VLRCOMN_EARLY_INIT DeleteWhenFinishedKey = "DeleteWhenFinished";
const std::string VLRCOMN_EARLY_INIT StartDateTime_Key = "StartDateTime";
const std::string VLRCOMN_EARLY_INIT StopDateTime_Key = "StopDateTime";
const std::string VLRCOMN_EARLY_INIT StopTimeSpecified_Key = "StopDateValid";
const std::string VLRCOMN_EARLY_INIT ScheduleType_Key = "Type";
const std::string VLRCOMN_EARLY_INIT IdleMinutes_Key = "IdleMinutes";
const std::string VLRCOMN_EARLY_INIT RunIfMissed_Key = "RunIfMissed";
const std::string VLRCOMN_EARLY_INIT RunIfMissedDelay_Key = "RunIfMissedDelayMins";
const std::string VLRCOMN_EARLY_INIT AtStartupDelayMinutes_Key = "AtStartupDelayMinutes";
const std::string VLRCOMN_EARLY_INIT RandomizationEnabled_Key = "RandomizationEnabled";
const std::string VLRCOMN_EARLY_INIT RandomizationInterval_Key = "RandomizationWndMins";
const std::string VLRCOMN_EARLY_INIT TaskRepeatable_Key = "TaskRepeatable";
const std::string VLRCOMN_EARLY_INIT RepeatOption_Key = "RepeatOption";
const std::string VLRCOMN_EARLY_INIT RepeatInterval_Key = "RepeatInterval";
const std::string VLRCOMN_EARLY_INIT UntilOption_Key = "UntilOption";
const std::string VLRCOMN_EARLY_INIT UntilDuration_Key = "UntilDuration";
const std::string VLRCOMN_EARLY_INIT UntilTime_Key = "UntilTime";
const std::string VLRCOMN_EARLY_INIT GMT_Key = "GMTTime";
const std::string VLRCOMN_EARLY_INIT TaskFinished_Key = "TaskFinished";
const std::string VLRCOMN_EARLY_INIT RepeatDays_Key = "RepeatDays";
const std::string VLRCOMN_EARLY_INIT DaysOfWeek_Key = "MaskDaysOfWeek";
const std::string VLRCOMN_EARLY_INIT RepeatWeeks_Key = "RepeatWeeks";
const std::string VLRCOMN_EARLY_INIT MonthOption_Key = "MonthOption";
const std::string VLRCOMN_EARLY_INIT DayNumOfMonth_Key = "DayNumOfMonth";
const std::string VLRCOMN_EARLY_INIT WeekNumOfMonth_Key = "WeekNumOfMonth";
const std::string VLRCOMN_EARLY_INIT DayOfWeek_Key = "DayOfWeek";
const std::string VLRCOMN_EARLY_INIT MaskMonthsOfYear_Key = "MaskMonthsOfYear";
const std::string VLRCOMN_EARLY_INIT Dependency_I_Key = "Dependency";
const std::string VLRCOMN_EARLY_INIT NumDependencies_Key = "NumberOfDependencies";
const std::string VLRCOMN_EARLY_INIT EnableRunTaskOnceADay_Key = "EnableRunTaskOnceADay";

// Section and keys of the property report.
const std::wstring VLRCOMN_EARLY_INIT props_section_general = L"General";
const std::wstring VLRCOMN_EARLY_INIT props_key_installed_path = L"szInstallDir";
const std::wstring VLRCOMN_EARLY_INIT props_key_product_version = L"szProductVer";
const std::wstring VLRCOMN_EARLY_INIT props_key_hotfix_version = L"Hotfix";
const std::wstring VLRCOMN_EARLY_INIT props_key_show_ui = L"ShowAgentUI";
const std::wstring VLRCOMN_EARLY_INIT props_key_show_reboot_ui = L"ShowRebootUI";
const std::wstring VLRCOMN_EARLY_INIT props_key_reboot_timeout = L"RebootTimeOut";
const std::wstring VLRCOMN_EARLY_INIT props_key_plugin_version = L"PluginVersion";
const std::wstring VLRCOMN_EARLY_INIT props_key_language = L"Language";
const std::wstring VLRCOMN_EARLY_INIT props_key_agent_guid = L"AgentGUID";
const std::wstring VLRCOMN_EARLY_INIT props_key_asci = L"CheckNetworkMessageInterval";
const std::wstring VLRCOMN_EARLY_INIT props_key_refresh_interval = L"PropsRefreshInterval";
const std::wstring VLRCOMN_EARLY_INIT props_loggedon_user = L"UserName";

}  // namespace velora_com::qel
// NOLINTEND(cert-err58-cpp)
