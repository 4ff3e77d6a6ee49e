// The sample configuration of the IAB center, with texts in further languages.
import { existsSync } from "node:fs";
import { readFile } from "node:fs/promises";
import { iabSample, listOfFormat3, vendorList } from "./browser.mjs";

const texts = {
  el: {
    generic: {
      acceptAllButton: "Αποδοχή όλων", refuseAllButton: "Απόρριψη όλων", detailButton: "Λεπτομέρειες",
      saveButton: "Αποθήκευση επιλογών", purposeButton: "Σκοποί", vendorButton: "Συνεργάτες",
      backButton: "Πίσω", legalButton: "Νομικό κείμενο", relatedVendorsButton: "Σχετικοί συνεργάτες",
      partnersLinkText: "οι συνεργάτες μας", consentDef: "Συγκατάθεση",
      purposeDef: "Σκοποί με τη συγκατάθεσή σας", legIntPurposeDef: "Σκοποί έννομου συμφέροντος",
      featureDef: "Χαρακτηριστικά", specialPurposeDef: "Ειδικοί σκοποί",
      specialFeatureDef: "Ειδικά χαρακτηριστικά",
    },
    popup: {
      title: "Το απόρρητό σας στη Harbour Weekly",
      content: "Με τη συγκατάθεσή σας, εμείς και οι συνεργάτες μας αποθηκεύουμε και διαβάζουμε πληροφορίες σε αυτή τη συσκευή, για να μετράμε τι διαβάζεται, να προτείνουμε άρθρα και να προβάλλουμε διαφημίσεις. Μπορείτε να αποδεχτείτε τα πάντα, να απορρίψετε τα πάντα ή να επιλέξετε, και να αλλάξετε γνώμη οποτεδήποτε.",
      purposeTitle: "Τι σας ζητάμε", featureTitle: "Με ποιον τρόπο",
      specialPurposeTitle: "Τι είναι πάντα απαραίτητο", specialFeatureTitle: "Τι ζητάμε ιδιαιτέρως",
    },
    purposes: { title: "Σκοποί" },
    vendors: { title: "Συνεργάτες", privacyPolicyText: "Πολιτική απορρήτου" },
  },
  zh: {
    generic: {
      acceptAllButton: "全部接受", refuseAllButton: "全部拒绝", detailButton: "详细信息",
      saveButton: "保存我的选择", purposeButton: "目的", vendorButton: "合作伙伴", backButton: "返回",
      legalButton: "法律文本", relatedVendorsButton: "相关合作伙伴", partnersLinkText: "我们的合作伙伴",
      consentDef: "同意", purposeDef: "需经您同意的目的", legIntPurposeDef: "基于合法利益的目的",
      featureDef: "功能", specialPurposeDef: "特殊目的", specialFeatureDef: "特殊功能",
    },
    popup: {
      title: "您在 Harbour Weekly 的隐私",
      content: "经您同意，我们和我们的合作伙伴会在此设备上保存和读取信息，以衡量阅读内容、推荐文章并展示支持记者工作的广告。您可以全部接受、全部拒绝或自行选择，并可随时在设置中更改。",
      purposeTitle: "我们的请求", featureTitle: "实现方式", specialPurposeTitle: "始终必需的内容",
      specialFeatureTitle: "我们特别请求的内容",
    },
    purposes: { title: "目的" },
    vendors: { title: "合作伙伴", privacyPolicyText: "隐私政策" },
  },
  ar: {
    generic: {
      acceptAllButton: "قبول الكل", refuseAllButton: "رفض الكل", detailButton: "التفاصيل",
      saveButton: "حفظ اختياراتي", purposeButton: "الأغراض", vendorButton: "الشركاء", backButton: "رجوع",
      legalButton: "النص القانوني", relatedVendorsButton: "الشركاء المعنيون", partnersLinkText: "شركاؤنا",
      consentDef: "الموافقة", purposeDef: "أغراض بموافقتك", legIntPurposeDef: "أغراض المصلحة المشروعة",
      featureDef: "الميزات", specialPurposeDef: "أغراض خاصة", specialFeatureDef: "ميزات خاصة",
    },
    popup: {
      title: "خصوصيتك في Harbour Weekly",
      content: "بموافقتك نحفظ نحن و شركاؤنا معلومات على هذا الجهاز ونقرؤها لقياس ما يُقرأ واقتراح المقالات وعرض الإعلانات التي تموّل صحفيينا. يمكنك قبول كل شيء أو رفض كل شيء أو الاختيار، وتغيير رأيك في أي وقت من الإعدادات.",
      purposeTitle: "ما نطلبه", featureTitle: "كيف يتم ذلك", specialPurposeTitle: "ما هو ضروري دائمًا",
      specialFeatureTitle: "ما نطلبه بشكل خاص",
    },
    purposes: { title: "الأغراض" },
    vendors: { title: "الشركاء", privacyPolicyText: "سياسة الخصوصية" },
  },
};

const sample = JSON.parse(await readFile(iabSample, "utf8"));

/// The sample configuration, with its texts in this language also where none is asked for.
export function sampleIn(language) {
  const own = texts[language] ?? sample[`texts_${language}`] ?? sample.texts;
  return { ...sample, texts: own, [`texts_${language}`]: own };
}

/// What is to be given to `serve` for the IAB center in a language: the published translation of
/// purposes and features, where VXPRIVACY_DATA has it. In German there is a list of format 3, of
/// which more is shown.
export function listsIn(language) {
  if (language === "de") return [listOfFormat3, listOfFormat3.replace("vendor-list", "purposes-de")];
  const published = `${process.env.VXPRIVACY_DATA}/gvl/purposes-${language}.json`;
  return existsSync(published) ? [vendorList, published] : [vendorList];
}
