#include "Support/BuiltInMessages.h"

#include <cstring>

namespace {

constexpr int kMessageCount = 5;

struct Language {
  const char* locale;
  const char* messages[kMessageCount];
};

// The first is the one for every other locale.
constexpr Language kLanguages[] = {
    {"en-us",
     {"Error %d occurred!", "Access denied.", "The data is invalid.",
      "There are currently no logon servers available to service the logon request.",
      "Invalid URL specified. Unsupported protocol."}},
    {"de-de",
     {"Fehler %d aufgetreten!", "Zugriff verweigert.", "Die Daten sind ungültig.",
      "Es sind derzeit keine Anmeldeserver verfügbar, um die Anmeldeanforderung zu bearbeiten.",
      "Angegebene URL ungültig. Protokoll nicht unterstützt."}},
    {"es-es",
     {"Se ha producido el error %d", "Acceso denegado.", "Los datos no son válidos.",
      "No hay servidores de inicio de sesión disponibles en estos momentos para procesar la solicitud de inicio de "
      "sesión.",
      "URL no válida. Protocolo no compatible."}},
    {"fr-fr",
     {"Une erreur %d s'est produite.", "Accès refusé.", "Les données ne sont pas valides.",
      "Aucun serveur de connexion n'est disponible actuellement pour répondre à la demande d'ouverture de session.",
      "URL spécifiée non valide. Protocole non pris en charge."}},
    {"ja-jp",
     {"エラー%dが発生しました！", "アクセス拒否。", "データは無効です。",
      "ログオン要求を処理できるログオンサーバーはありませんがまだありません。",
      "無効なURLが指定された。サポートされていないプロトコル。"}},
    {"ko-kr",
     {"%d 오류가 발생했습니다!", "액세스가 거부되었습니다.", "데이터가 잘못되었습니다.",
      "로그온 요청에 서비스 할 수있는 로그온 서버가 없습니다.",
      "잘못된 URL을 지정했습니다. 지원되지 않는 프로토콜입니다."}},
    {"zh-cn",
     {"误差％d发生！", "拒绝访问。", "的数据是无效的。", "目前没有可用于登录请求的登录服务器。",
      "无效的URL指定。不支持的协议。"}},
    {"zh-hk",
     {"誤差％d發生！", "拒絕訪問。", "的數據是無效的。", "目前沒有可用的登錄服務器可處理登錄請求。",
      "無效的URL指定。不支持的協議。"}},
};

}  // namespace

const char* i18n_get_locale_string(const char* locale, int index) {
  if (index < 0 || index >= kMessageCount) return "";
  for (const Language& language : kLanguages) {
    if (locale && strcmp(locale, language.locale) == 0) return language.messages[index];
  }
  return kLanguages[0].messages[index];
}
