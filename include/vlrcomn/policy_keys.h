/**
 * @file
 * @brief Section and key names of the agent's policy, its task files and its property report.
 *
 * Every component that reads or writes these settings takes the names from here, so that all spell
 * them alike. The library itself reads none of them; where the settings are stored and what type a
 * value has is the agent's affair.
 *
 * Each constant holds exactly the text quoted with it. Policy and property names are wide, task-file
 * names narrow. Texts are case-sensitive. Some names share a text on purpose, for example
 * velora_com::qel::section_general and the narrow velora_com::qel::GeneralSection.
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

/** @addtogroup keys
 * @{ */

/** @name Sections of the agent policy
 * @{ */
extern VLRCOMN_API const std::wstring section_general;         /**< "General" */
extern VLRCOMN_API const std::wstring section_network;         /**< "Network" */
extern VLRCOMN_API const std::wstring section_listenserver;    /**< "AgentListenServer" */
extern VLRCOMN_API const std::wstring section_events;          /**< "AgentEvents" */
extern VLRCOMN_API const std::wstring section_logging;         /**< "AgentLogging" */
extern VLRCOMN_API const std::wstring section_sitelist;        /**< "SiteList" */
extern VLRCOMN_API const std::wstring section_proxy;           /**< "ProxySettings" */
extern VLRCOMN_API const std::wstring section_version_control; /**< "VersionControl" */
extern VLRCOMN_API const std::wstring section_inetmanager;     /**< "InetManager" */
extern VLRCOMN_API const std::wstring section_advanced;        /**< "Advanced" */
/** @} */

/** @name Keys of the policy section "General"
 * @{ */
extern VLRCOMN_API const std::wstring key_general_bCollectFullProps; /**< "bCollectFullProps" */
/** "PolicyEnforcementInterval" */
extern VLRCOMN_API const std::wstring key_general_PolicyEnforcementInterval;
extern VLRCOMN_API const std::wstring key_general_force_install; /**< "ForceInstall" */
/** @} */

/** @name Keys of the policy section "Network"
 * @{ */
extern VLRCOMN_API const std::wstring key_network_bAgentASCI; /**< "bAgentASCI" */
/** "CheckNetworkMessageInterval" */
extern VLRCOMN_API const std::wstring key_network_asci_interval;
extern VLRCOMN_API const std::wstring key_network_asci_do_when; /**< "AsciDoWhen" */
/** @} */

/** @name Keys of the policy section "AgentListenServer"
 * @{ */
extern VLRCOMN_API const std::wstring key_ls_bEnableAgentPing;    /**< "bEnableAgentPing" */
extern VLRCOMN_API const std::wstring key_ls_bEnableRelayService; /**< "bEnableRelayService" */
extern VLRCOMN_API const std::wstring key_ls_AgentPingPort;       /**< "AgentPingPort" */
/** "bListenToKSVServerOnly" */
extern VLRCOMN_API const std::wstring key_ls_bListenToKSVServerOnly;
/** @} */

/** @name Keys of the policy section "AgentEvents"
 * @{ */
/** "AgPlcyEnableEventTrigger" */
extern VLRCOMN_API const std::wstring key_events_EnableEventTrigger;
/** "AgPlcyEventTriggerThreshold" */
extern VLRCOMN_API const std::wstring key_events_EventTriggerThreshold;
/** "AgPlcyEventTriggerDelayMins" */
extern VLRCOMN_API const std::wstring key_events_EventTriggerDelayMins;
/** "AgPlcyMaxEventsPerTrigger" */
extern VLRCOMN_API const std::wstring key_events_MaxEventsPerTrigger;
/** @} */

/** @name Keys of the policy section "AgentLogging"
 * @{ */
extern VLRCOMN_API const std::wstring key_log_bEnableLog;       /**< "bEnableLog" */
extern VLRCOMN_API const std::wstring key_log_bLimitLogSize;    /**< "bLimitLogSize" */
extern VLRCOMN_API const std::wstring key_log_nLogSizeLimit;    /**< "nLogSizeLimit" */
extern VLRCOMN_API const std::wstring key_log_bVerbose;         /**< "bVerbose" */
extern VLRCOMN_API const std::wstring key_log_bEnableRemoteLog; /**< "bEnableRemoteLog" */
/** @} */

/** @name Keys of the policy section "SiteList"
 * @{ */
extern VLRCOMN_API const std::wstring key_sl_NumberOfSites;      /**< "uiNumberOfSites" */
extern VLRCOMN_API const std::wstring key_sl_protocol;           /**< "uiSiteType" */
extern VLRCOMN_API const std::wstring key_sl_enabled;            /**< "bEnabled" */
extern VLRCOMN_API const std::wstring key_sl_site_id;            /**< "szID" */
extern VLRCOMN_API const std::wstring key_sl_site_name;          /**< "szName" */
extern VLRCOMN_API const std::wstring key_sl_sites_server;       /**< "szServer" */
extern VLRCOMN_API const std::wstring key_sl_server_name;        /**< "szServerName" */
extern VLRCOMN_API const std::wstring key_sl_server_ip;          /**< "szServerIP" */
extern VLRCOMN_API const std::wstring key_sl_share_name;         /**< "szShareName" */
extern VLRCOMN_API const std::wstring key_sl_relative_path;      /**< "szRelativePath" */
extern VLRCOMN_API const std::wstring key_sl_site_port;          /**< "uiPort" */
extern VLRCOMN_API const std::wstring key_sl_type;               /**< "uiType" */
extern VLRCOMN_API const std::wstring key_sl_use_auth;           /**< "bUseAuth" */
extern VLRCOMN_API const std::wstring key_sl_user_name;          /**< "szUserName" */
extern VLRCOMN_API const std::wstring key_sl_password;           /**< "szPassword" */
extern VLRCOMN_API const std::wstring key_sl_password_encrypted; /**< "bEncrypted" */
extern VLRCOMN_API const std::wstring key_sl_domain;             /**< "szDomainName" */
extern VLRCOMN_API const std::wstring key_sl_order;              /**< "uiOrder" */
extern VLRCOMN_API const std::wstring key_sl_local;              /**< "bLocal" */
/** @} */

/** @name Keys of the policy section "ProxySettings"
 * @{ */
extern VLRCOMN_API const std::wstring key_proxy_type;           /**< "uiUseProxyType" */
extern VLRCOMN_API const std::wstring key_proxy_http_server;    /**< "szHttpProxyServer" */
extern VLRCOMN_API const std::wstring key_proxy_http_port;      /**< "uiHttpProxyPort" */
extern VLRCOMN_API const std::wstring key_proxy_http_use_auth;  /**< "bUseHttpAuthentication" */
extern VLRCOMN_API const std::wstring key_proxy_http_user;      /**< "szHttpProxyUser" */
extern VLRCOMN_API const std::wstring key_proxy_http_password;  /**< "szHttpProxyPassword" */
extern VLRCOMN_API const std::wstring key_proxy_ftp_server;     /**< "szFtpProxyServer" */
extern VLRCOMN_API const std::wstring key_proxy_ftp_port;       /**< "uiFtpProxyPort" */
extern VLRCOMN_API const std::wstring key_proxy_ftp_use_auth;   /**< "bUseFtpAuthentication" */
extern VLRCOMN_API const std::wstring key_proxy_ftp_user;       /**< "szFtpProxyUser" */
extern VLRCOMN_API const std::wstring key_proxy_ftp_password;   /**< "szFtpProxyPassword" */
extern VLRCOMN_API const std::wstring key_proxy_num_exceptions; /**< "uiNumExceptions" */
extern VLRCOMN_API const std::wstring key_proxy_exception;      /**< "Exception" */
extern VLRCOMN_API const std::wstring key_proxy_bypass_local;   /**< "bBypassLocalAddress" */
/** @} */

/** @name Keys of the policy section "VersionControl"
 * @{ */
extern VLRCOMN_API const std::wstring key_vc_version; /**< "Version" */
/** @} */

/** @name Keys of the policy section "InetManager"
 * @{ */
extern VLRCOMN_API const std::wstring key_inetmgr_total_sites;      /**< "SitelistOrderNum" */
extern VLRCOMN_API const std::wstring key_inetmgr_disabled_sites;   /**< "DisabledSiteNum" */
extern VLRCOMN_API const std::wstring key_inetmgr_sl_order;         /**< "SitelistOrder" */
extern VLRCOMN_API const std::wstring key_inetmgr_sl_disabled_site; /**< "DisabledSites" */
/** @} */

/** @name Keys of the policy section "Advanced"
 * @{ */
extern VLRCOMN_API const std::wstring key_advanced_FindNearestMethod; /**< "uiFindNearestMethod" */
/** "OverwriteClientSites" */
extern VLRCOMN_API const std::wstring key_advanced_overwrite_client_sites;
/** @} */

/** @name Keys of the agent policy whose names carry no section
 * @{ */
extern VLRCOMN_API const std::wstring key_EnforcePolicy;         /**< "EnforcePolicy" */
extern VLRCOMN_API const std::wstring key_relay_service_enabled; /**< "bEnableRelayService" */
extern VLRCOMN_API const std::wstring key_p2p_service_enabled;   /**< "bEnableP2PService" */
extern VLRCOMN_API const std::wstring key_agent_serviceport;     /**< "AgtServiceMgrPort" */
/** "FAILED_TO_CONN_SERVER" */
extern VLRCOMN_API const std::wstring key_count_relay_failure_connections;
/** "MAX_CONN_EXCEEDED" */
extern VLRCOMN_API const std::wstring key_count_relay_max_connections_exceeded;
/** @} */

/** @name Sections of a task file
 * @{ */
extern VLRCOMN_API const std::string TaskSection;         /**< "Task" */
extern VLRCOMN_API const std::string TaskGroupSection;    /**< "TaskGroup" */
extern VLRCOMN_API const std::string GeneralSection;      /**< "General" */
extern VLRCOMN_API const std::string TaskRoot;            /**< "TaskRoot" */
extern VLRCOMN_API const std::string SettingsSection;     /**< "Settings" */
extern VLRCOMN_API const std::string Schedule_Section;    /**< "Schedule" */
extern VLRCOMN_API const std::string DependenciesSection; /**< "Task Dependencies" */
/** @} */

/** @name Keys of a task file
 * @{ */
extern VLRCOMN_API const std::string TaskNameKey;               /**< "DisplayName" */
extern VLRCOMN_API const std::string PlatformsKey;              /**< "Platforms" */
extern VLRCOMN_API const std::string TaskGuidKey;               /**< "TaskID" */
extern VLRCOMN_API const std::string SoftwareIdKey;             /**< "SoftwareID" */
extern VLRCOMN_API const std::string PriorityKey;               /**< "Priority" */
extern VLRCOMN_API const std::string VersionKey;                /**< "TaskVersion" */
extern VLRCOMN_API const std::string TaskTypeKey;               /**< "TaskType" */
extern VLRCOMN_API const std::string CreatorSoftwareKey;        /**< "CreatorID" */
extern VLRCOMN_API const std::string PendingKey;                /**< "TaskPending" */
extern VLRCOMN_API const std::string EnabledKey;                /**< "Enabled" */
extern VLRCOMN_API const std::string StopAfterMinutesKey;       /**< "StopAfterMinutes" */
extern VLRCOMN_API const std::string DeleteWhenFinishedKey;     /**< "DeleteWhenFinished" */
extern VLRCOMN_API const std::string StartDateTime_Key;         /**< "StartDateTime" */
extern VLRCOMN_API const std::string StopDateTime_Key;          /**< "StopDateTime" */
extern VLRCOMN_API const std::string StopTimeSpecified_Key;     /**< "StopDateValid" */
extern VLRCOMN_API const std::string ScheduleType_Key;          /**< "Type" */
extern VLRCOMN_API const std::string IdleMinutes_Key;           /**< "IdleMinutes" */
extern VLRCOMN_API const std::string RunIfMissed_Key;           /**< "RunIfMissed" */
extern VLRCOMN_API const std::string RunIfMissedDelay_Key;      /**< "RunIfMissedDelayMins" */
extern VLRCOMN_API const std::string AtStartupDelayMinutes_Key; /**< "AtStartupDelayMinutes" */
extern VLRCOMN_API const std::string RandomizationEnabled_Key;  /**< "RandomizationEnabled" */
extern VLRCOMN_API const std::string RandomizationInterval_Key; /**< "RandomizationWndMins" */
extern VLRCOMN_API const std::string TaskRepeatable_Key;        /**< "TaskRepeatable" */
extern VLRCOMN_API const std::string RepeatOption_Key;          /**< "RepeatOption" */
extern VLRCOMN_API const std::string RepeatInterval_Key;        /**< "RepeatInterval" */
extern VLRCOMN_API const std::string UntilOption_Key;           /**< "UntilOption" */
extern VLRCOMN_API const std::string UntilDuration_Key;         /**< "UntilDuration" */
extern VLRCOMN_API const std::string UntilTime_Key;             /**< "UntilTime" */
extern VLRCOMN_API const std::string GMT_Key;                   /**< "GMTTime" */
extern VLRCOMN_API const std::string TaskFinished_Key;          /**< "TaskFinished" */
extern VLRCOMN_API const std::string RepeatDays_Key;            /**< "RepeatDays" */
extern VLRCOMN_API const std::string DaysOfWeek_Key;            /**< "MaskDaysOfWeek" */
extern VLRCOMN_API const std::string RepeatWeeks_Key;           /**< "RepeatWeeks" */
extern VLRCOMN_API const std::string MonthOption_Key;           /**< "MonthOption" */
extern VLRCOMN_API const std::string DayNumOfMonth_Key;         /**< "DayNumOfMonth" */
extern VLRCOMN_API const std::string WeekNumOfMonth_Key;        /**< "WeekNumOfMonth" */
extern VLRCOMN_API const std::string DayOfWeek_Key;             /**< "DayOfWeek" */
extern VLRCOMN_API const std::string MaskMonthsOfYear_Key;      /**< "MaskMonthsOfYear" */
extern VLRCOMN_API const std::string Dependency_I_Key;          /**< "Dependency" */
extern VLRCOMN_API const std::string NumDependencies_Key;       /**< "NumberOfDependencies" */
extern VLRCOMN_API const std::string EnableRunTaskOnceADay_Key; /**< "EnableRunTaskOnceADay" */
/** @} */

/** @name Section and keys of the property report
 * @{ */
extern VLRCOMN_API const std::wstring props_section_general;     /**< "General" */
extern VLRCOMN_API const std::wstring props_key_installed_path;  /**< "szInstallDir" */
extern VLRCOMN_API const std::wstring props_key_product_version; /**< "szProductVer" */
extern VLRCOMN_API const std::wstring props_key_hotfix_version;  /**< "Hotfix" */
extern VLRCOMN_API const std::wstring props_key_show_ui;         /**< "ShowAgentUI" */
extern VLRCOMN_API const std::wstring props_key_show_reboot_ui;  /**< "ShowRebootUI" */
extern VLRCOMN_API const std::wstring props_key_reboot_timeout;  /**< "RebootTimeOut" */
extern VLRCOMN_API const std::wstring props_key_plugin_version;  /**< "PluginVersion" */
extern VLRCOMN_API const std::wstring props_key_language;        /**< "Language" */
extern VLRCOMN_API const std::wstring props_key_agent_guid;      /**< "AgentGUID" */
extern VLRCOMN_API const std::wstring props_key_asci; /**< "CheckNetworkMessageInterval" */
extern VLRCOMN_API const std::wstring props_key_refresh_interval; /**< "PropsRefreshInterval" */
extern VLRCOMN_API const std::wstring props_loggedon_user;        /**< "UserName" */
/** @} */

/** @} */

}  // namespace velora_com::qel

#endif
